#pragma once

#include "kiv/KivCollections.h"
#include "kiv/KivElementType.h"
#include "kiv/KivString.h"
#include "kiv/KivTraversal.h"

#include <cstdint>

/// Root of everything a model holds.
///
/// Objects are plain data: the host fills the public fields, tools read them. They refer to each other by plain
/// pointers and own nothing but their texts and collections; `KivModel::create` makes objects that live as long as the
/// model.
class __attribute__((visibility("default"))) KivObject {
public:
    KivObject(const KivObject&) = delete;
    KivObject& operator=(const KivObject&) = delete;

    // Classes of hosts derive from these, so the order of the virtual operations is part of the interface. Those that
    // say "nothing" are for hosts to override.

    /// Takes over what `other` has: nothing.
    virtual void setFrom(const KivObject& other);
    virtual ~KivObject();
    /// Leaves the object that this one is a part of: nothing.
    virtual void removeAggregationAssembly();
    /// Deletes the object and what it holds: nothing, objects of a model live as long as it does.
    virtual void recursiveDelete();
    /// Takes the object out of its surroundings: nothing.
    virtual void isolate(bool isDeep);
    /// True for the object's own code and for the codes of its bases.
    [[nodiscard]] virtual bool isInstanceOf(KivElementType code) const;
    /// The package that holds a package, or null; null for every other object.
    [[nodiscard]] virtual KivObject* getParent() const;
    [[nodiscard]] virtual int getParentCount() const;
    /// Whether both are the same object.
    [[nodiscard]] virtual bool operator==(const KivObject& other) const;
    [[nodiscard]] virtual bool operator!=(const KivObject& other) const;
    [[nodiscard]] virtual bool equals(const KivObject& other) const;
    /// Whether others refer to the object: false.
    [[nodiscard]] virtual bool isReferenced() const;
    /// Replaces the name and the description by what `convert` makes of them.
    virtual void transcode(KivString (*convert)(const KivString&));
    /// Visits this object and everything it holds, depth-first, each object once; what an object holds is visited in
    /// a fixed order (packages: elements, sub-packages, diagrams, notes). Neither allocates nor recurses with the
    /// depth of the package tree, so it throws only what the operation throws. The objects note how far a pass has
    /// come: an operation must not begin another pass over what it is passing over.
    virtual void depthTraversal(KivTraversalOperation& operation, void* context);
    virtual void setName(const KivString& newName);
    [[nodiscard]] virtual const KivString& getName() const { return name; }
    /// The name as users see it.
    [[nodiscard]] virtual KivString getDisplayName() const;
    /// Visits what the object holds; a part of `depthTraversal`.
    virtual void _depthTraversal(KivTraversalOperation& operation, void* context);
    /// The name of the class that the object's code stands for.
    [[nodiscard]] virtual const char* getMetaClass() const;

    // What a pass over a model asks of every object stands at its head, side by side. After that fields are ordered by
    // size, so that an object of a large model has no gaps.
    KivElementType elementType;

private:
    friend class KivSequence; // asks for what belongs to an object

    std::uint32_t lastPass = 0;

protected:
    long pid = 0; // public in KivModelObject: what is none has no number
    KivString name;

public:
    /// Documentation; the text of a note stands here too.
    KivString description;
    /// A free slot for tools; null when nobody uses it.
    void* generalPointer = nullptr;

protected:
    explicit KivObject(KivElementType code = KivElementType::Object);
    /// Visits `object` unless it is null or this pass has been there.
    static void visit(KivObject* object, KivTraversalOperation& operation, void* context)
    {
        if (!object || !object->enter(operation))
            return;
        if (operation.hearsOfEntering)
            operation.pre_process(object, context);
        object->_depthTraversal(operation, context);
        operation.post_process(object, context);
    }
    template <class Element>
    static void visitAll(const KivSequenceOf<Element>& elements, KivTraversalOperation& operation, void* context)
    {
        for (Element* const element : elements)
            visit(element, operation, context);
    }
    /// True the first time that the pass of `operation` asks.
    [[nodiscard]] bool enter(const KivTraversalOperation& operation) noexcept
    {
        if (lastPass == operation.pass)
            return false;
        lastPass = operation.pass;
        return true;
    }
};

/// A note: a text attached to an element, or loose in a package.
class __attribute__((visibility("default"))) KivNote : public KivObject {
public:
    KivNote();
    [[nodiscard]] const KivString& getText() const { return description; }
};

class KivClassDiagram;

class __attribute__((visibility("default"))) KivPresentationElement : public KivObject {
protected:
    explicit KivPresentationElement(KivElementType code = KivElementType::PresentationElement);
};

/// Where and how an element is drawn on one diagram.
class __attribute__((visibility("default"))) KivProjection : public KivPresentationElement {
public:
    KivProjection();

    KivClassDiagram* diagram = nullptr;
    /// Centre, in model units.
    int x = 0;
    int y = 0;
    /// Size, in model units.
    int width = 0;
    int height = 0;
    /// Colours as Rose writes them: red + 256 x green + 65536 x blue.
    int lineColor = 3342489;
    int fillColor = 13434879;
    int fontColor = 0;
    int fontSize = 10;
    KivString fontName = "Arial";

protected:
    explicit KivProjection(KivElementType code);
};

/// The projection of a relationship or role: a line.
class __attribute__((visibility("default"))) KivRelationshipProjection : public KivProjection {
public:
    KivRelationshipProjection();

    /// The line's points in model units, origin end first: `(x,y)` each, separated by CR LF.
    KivString vertices;
};

/// Every object that carries a number during an export.
class __attribute__((visibility("default"))) KivModelObject : public KivObject {
public:
    /// The number that an export gives the object; 0 outside of an export.
    using KivObject::pid;
    KivString stereotype;
    KivVector<KivNote> notes;
    KivVector<KivProjection> projections;
    /// 2 marks an element that is not exported.
    int modelLevel = 0;

protected:
    explicit KivModelObject(KivElementType code = KivElementType::ModelObject);
};

class __attribute__((visibility("default"))) KivModelElement : public KivModelObject {
protected:
    explicit KivModelElement(KivElementType code = KivElementType::ModelElement);
};

/// What stands for elements of this model in another one.
class __attribute__((visibility("default"))) KivMappingObject : public KivObject {
protected:
    explicit KivMappingObject(KivElementType code = KivElementType::MappingObject);
};

class __attribute__((visibility("default"))) KivClassifierMap : public KivMappingObject {
public:
    KivClassifierMap();
};

class __attribute__((visibility("default"))) KivTransformation : public KivMappingObject {
public:
    KivTransformation();
};
