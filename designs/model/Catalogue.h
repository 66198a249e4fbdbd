#pragma once

#include "designs/model/Design.h"

#include <string_view>
#include <unordered_map>
#include <variant>

namespace design {

/// The elements of a design by identifier. Holds as long as no element comes, goes or moves.
class Catalogue {
public:
    using Entry =
        std::variant<const Package*, const Classifier*, const Association*, const Relationship*, const Element*>;

    explicit Catalogue(const Package& root);

    /// Null when no element, or one of another kind, has the identifier.
    [[nodiscard]] const Classifier* classifier(std::string_view id) const { return find<Classifier>(id); }
    [[nodiscard]] const Association* association(std::string_view id) const { return find<Association>(id); }
    [[nodiscard]] const Relationship* relationship(std::string_view id) const { return find<Relationship>(id); }
    [[nodiscard]] const Package* package(std::string_view id) const { return find<Package>(id); }
    [[nodiscard]] bool has(std::string_view id) const { return entries.contains(id); }

    /// The first classifier of that name, or null.
    [[nodiscard]] const Classifier* classifierNamed(std::string_view name) const;

    /// The classifier that a reference leads to: by identifier, or by name where there is none. Or null.
    [[nodiscard]] const Classifier* classifierOf(const Reference& reference) const;

private:
    template <class Kind>
    [[nodiscard]] const Kind* find(std::string_view id) const
    {
        const auto found = entries.find(id);
        const auto* const entry = found == entries.end() ? nullptr : std::get_if<const Kind*>(&found->second);
        return entry ? *entry : nullptr;
    }
    void add(const Element& element, Entry entry);
    void addFeatures(const Classifier& classifier);

    std::unordered_map<std::string_view, Entry> entries;
    std::unordered_map<std::string_view, const Classifier*> classifiersByName;
};

} // namespace design
