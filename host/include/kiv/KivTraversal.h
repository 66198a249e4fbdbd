#pragma once

#include <cstdint>

class KivObject;

/// Something done to every object of a model, in one depth-first pass (`KivObject::depthTraversal`).
class __attribute__((visibility("default"))) KivTraversalOperation {
public:
    KivTraversalOperation() = default;
    KivTraversalOperation(const KivTraversalOperation&) = delete;
    KivTraversalOperation& operator=(const KivTraversalOperation&) = delete;

    // Classes of hosts derive from this one, so the order of the virtual operations is part of the interface.

    /// Called on entering an object, unless the operation is one of `onLeavingOnly`; what it leaves in `context` is
    /// handed to the object's contents.
    virtual void pre_process(KivObject* object, void*& context);
    /// Called on leaving an object, after everything it holds.
    virtual void post_process(KivObject* object, void* context);
    virtual ~KivTraversalOperation();

protected:
    /// An operation that does nothing on entering objects says so: calls cost time.
    enum class Calls : bool { onEnteringAndLeaving, onLeavingOnly };
    explicit KivTraversalOperation(Calls calls) : hearsOfEntering(calls == Calls::onEnteringAndLeaving) {}

private:
    friend class KivObject;
    friend class KivPackage;
    bool hearsOfEntering = true;
    std::uint32_t pass = 0;
};

/// Stores a value into the general pointer of every object.
class __attribute__((visibility("default"))) KivSetGeneralPointerOperation : public KivTraversalOperation {
public:
    explicit KivSetGeneralPointerOperation(void* theValue)
        : KivTraversalOperation(Calls::onLeavingOnly), value(theValue)
    {
    }
    void post_process(KivObject* object, void* context) override;

private:
    void* value;
};
