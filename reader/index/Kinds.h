#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What the objects of a file are, by their keywords.

namespace reader {

class Object;

enum class DiagramKind : std::uint8_t {
    classes,       ///< ClassDiagram
    useCases,      ///< UseCaseDiagram
    sequence,      ///< InteractionDiagram
    collaboration, ///< ObjectDiagram
    state,         ///< State_Diagram
    activity,      ///< ActivityDiagram
    component,     ///< Module_Diagram
    deployment,    ///< Process_Diagram
    threeTier,     ///< Tier_Diagram
    other,         ///< a kind not known here that holds a list of diagram items
};

/// What an element is to the one who reads an outline.
enum class ElementKind : std::uint8_t {
    none,       ///< no element: a view, a font, a property
    package,    ///< Class_Category, SubSystem
    classifier, ///< Class and its kinds, UseCase
    component,  ///< module
    node,       ///< Processor, Device
    relation,   ///< Association, Inheritance_Relationship ...
    feature,    ///< ClassAttribute, Operation, Parameter, Role
    behavior,   ///< Mechanism, Object, Message, State_Machine, State, State_Transition ...
};

/// What is known of the objects with one keyword.
struct KnownKind {
    std::string_view keyword;   ///< "Class_Category"
    std::string_view word = {}; ///< "package"; of a diagram its kind, "use case"; empty for views and parts
    ElementKind element = ElementKind::none;
    std::optional<DiagramKind> diagram = std::nullopt; ///< nothing for what is no diagram
};

/// Null for a kind that is not known here. Objects of such a kind are read like all others.
[[nodiscard]] const KnownKind* knownKindOf(const Object& object);

/// "class", "use case", "sequence" ...
[[nodiscard]] std::string_view diagramKindName(DiagramKind kind);
/// Nothing for what is no diagram.
[[nodiscard]] std::optional<DiagramKind> diagramKindOf(const Object& object);
[[nodiscard]] ElementKind elementKindOf(const Object& object);

/// Whether a name is none: empty, or what Rose calls `$UNNAMED$0`.
[[nodiscard]] bool isUnnamed(std::string_view name);
/// Name as shown: that of an element or diagram, or that of a view without the path in front of it; empty for what Rose
/// calls
/// `$UNNAMED$0`.
[[nodiscard]] std::string shownName(const Object& object);

} // namespace reader
