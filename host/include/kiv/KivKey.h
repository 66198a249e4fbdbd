#pragma once

#include "kiv/KivObject.h"

class KivAttribute;

/// A key of a class: the attributes that identify an object of it, or one of another class.
class __attribute__((visibility("default"))) KivKey : public KivModelObject {
public:
    KivLinkTree<KivAttribute> attributes;

protected:
    explicit KivKey(KivElementType code = KivElementType::Key);
};

class __attribute__((visibility("default"))) KivCandidateKey : public KivKey {
public:
    KivCandidateKey();
};

class __attribute__((visibility("default"))) KivForeignKey : public KivKey {
public:
    KivForeignKey();
};

/// What stands for an attribute on the other side of a key.
struct __attribute__((visibility("default"))) KivKeyMapping {
    KivKey* key = nullptr;                 ///< null matches no key
    KivModelObject* counterpart = nullptr; ///< null: nothing stands for it
};

/// The key mappings of an attribute, in the order in which they were added; of several with one key the first holds.
class __attribute__((visibility("default"))) KivKeyMappings {
public:
    KivKeyMappings() noexcept;
    ~KivKeyMappings();
    KivKeyMappings(const KivKeyMappings&) = delete;
    KivKeyMappings& operator=(const KivKeyMappings&) = delete;

    void add(const KivKeyMapping& mapping);
    [[nodiscard]] std::size_t count() const noexcept { return keys.count(); }
    /// `index` must be below `count()`.
    [[nodiscard]] KivKeyMapping at(std::size_t index) const;
    /// The counterpart in the first mapping with `key`, or null; constant time on average.
    [[nodiscard]] KivModelObject* counterpartOf(const KivKey* key) const;

private:
    KivVector<KivKey> keys;
    KivVector<KivModelObject> counterparts;
};
