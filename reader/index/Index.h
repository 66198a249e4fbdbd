#pragma once

#include "reader/document/Document.h"
#include "reader/index/Kinds.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What belongs to what in a document: elements by quid and by name, views by number, diagrams in order.

namespace reader {

enum class ReferenceState : std::uint8_t {
    found,
    none,     ///< it says itself that it leads nowhere: 000000000000, or there is neither quid nor name
    unloaded, ///< it leads, or may lead, into a controlled unit that is not loaded
    missing,  ///< nothing in the document is meant
};

struct Reference {
    ReferenceState state = ReferenceState::none;
    const Object* element = nullptr; ///< only when found
    bool isByName = false;           ///< nothing has the quid that it gives, or it gives none
};

struct Diagram {
    const Object* object = nullptr;
    DiagramKind kind = DiagramKind::other;
    std::string name;
    const Object* owner = nullptr; ///< package, class, use case or state machine that it is listed in
};

/// The quid of what a view shows or a relationship leads to: `quidu`, or `supplier_quidu` where both ends have one, as
/// those of transitions in petal version 50. Empty when there is none.
[[nodiscard]] std::string_view quidIn(const Object& from);

/// The document must stay where it is while the index is used.
class Index {
public:
    explicit Index(const Document& document);

    /// Whether units are missing, or the document is a unit itself, so that some references cannot lead anywhere.
    [[nodiscard]] bool isPart() const { return isPartial; }

    /// The first object with that quid, or null.
    [[nodiscard]] const Object* byQuid(std::string_view quid) const;
    /// The package, class, use case, component or node called so in full (`Logical View::Orders::Item`), or null. In a
    /// unit read by itself the packages around it may be in front of the name or not. A name without `::` leads to
    /// the only element of that name, too.
    [[nodiscard]] const Object* byName(std::string_view fullName) const;
    /// The view with that number in `diagram`; else the one with that number in the file of `diagram` if there is
    /// just one, which need not be in a diagram; or null.
    [[nodiscard]] const Object* view(const Object& diagram, std::uint32_t number) const;
    /// The view with that number in `diagram`, or in no diagram of the file of `from` if `diagram` is null; or null.
    [[nodiscard]] const Object* viewIn(const Object* diagram, const Object& from, std::uint32_t number) const;
    /// What a key of a view (`client`, `supplier`, `Parent_View` ...) refers to in its diagram, or null.
    [[nodiscard]] const Object* view(const Object& from, std::string_view key) const;

    /// The element that a view shows or a relationship leads to: by `quidu`, or `supplier_quidu` as petal version 50
    /// has it for transitions, else by the names it has (`supplier`, `class`, or those behind the kind of a view).
    [[nodiscard]] Reference element(const Object& from) const;
    /// What a quid, or else a name, leads to. Each may be empty.
    [[nodiscard]] Reference lookUp(std::string_view quid, std::string_view name) const;
    /// Objects with the quid of one before them, each with that one.
    [[nodiscard]] std::vector<std::pair<const Object*, const Object*>> duplicateQuids() const;
    /// Views with the number of one before them in their diagram, each with that one.
    [[nodiscard]] std::vector<std::pair<const Object*, const Object*>> duplicateViews() const;

    /// The views of an element, in the order of the files.
    [[nodiscard]] std::vector<const Object*> viewsOf(const Object& element) const;

    /// All diagrams, in the order of the files.
    [[nodiscard]] const std::vector<Diagram>& diagrams() const { return allDiagrams; }
    /// The diagram that `object` is in or is, or null.
    [[nodiscard]] const Object* diagramOf(const Object& object) const;
    /// Whether `fullName` is the path of an element; in a unit read by itself the packages around it may be in front.
    [[nodiscard]] bool isCalled(const Object& element, std::string_view fullName) const;
    /// Names of the packages and classes around an element and its own: `Logical View::Orders::Item::price`.
    [[nodiscard]] std::string path(const Object& element) const;

private:
    struct ByQuid {
        std::string_view quid;
        const Object* object;
    };
    struct ByName {
        std::uint64_t hash;
        const Object* object;
    };
    struct ByNumber {
        std::uint32_t number;
        std::uint32_t file;    // its place among the files
        std::uint32_t diagram; // its place among all diagrams, from 1; 0 is outside of them
        const Object* object;
    };
    struct Visit {
        const Object* object;
        std::uint64_t scope; // hash of the path around it
        std::uint32_t diagram;
    };

    void add(const Visit& visit, std::vector<Visit>& open);
    void sort();
    [[nodiscard]] static bool isBefore(const ByNumber& a, const ByNumber& b);
    [[nodiscard]] const Object* byHash(std::uint64_t hash, std::string_view name, bool isFullName) const;
    [[nodiscard]] bool isUnloaded(std::string_view fullName) const;
    [[nodiscard]] bool beginsUnloaded(std::string_view name) const;
    [[nodiscard]] std::uint32_t fileOf(const Object& object) const;
    [[nodiscard]] std::uint32_t placeOfDiagram(const Object& diagram) const;
    [[nodiscard]] const Object* onlyInFile(const Object& from, std::uint32_t number) const;

    const Document* document;
    std::vector<ByQuid> quids;
    std::vector<ByQuid> shown; ///< views by `quidu`
    std::vector<ByName> names;
    std::vector<ByName> simpleNames;
    std::vector<ByNumber> numbers;
    std::vector<Diagram> allDiagrams;
    std::vector<std::pair<const Object*, std::uint32_t>> diagramPlaces; ///< sorted; from 1
    std::vector<std::string> unloadedPaths;                             ///< sorted
    bool isPartial;                                                     // something of the model is not in the document
};

} // namespace reader
