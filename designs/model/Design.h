#pragma once

// A design as the tools save it, before it becomes a host model: what every format's reader fills and what the rest of
// the import works on. Elements are named by the identifiers of their file; geometry is in pixels of the tool, 96 to
// the inch, x to the right and y downward.

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace reader {
class Document;
}

namespace design {

/// An element of the design, or something else. `id` is empty or an identifier of the file; where no element of the
/// design has it, `name` (empty when the file does not tell) stands for what lies outside.
struct Reference {
    std::string id;
    std::string name;

    [[nodiscard]] bool isEmpty() const { return id.empty() && name.empty(); }
};

enum class Visibility : std::uint8_t {
    Public,
    Protected,
    Private,
    Package,
};

/// A value that a tool keeps with an element under a name of its own, e.g. {"Ecore", "nsURI", "http:///shop.ecore"}.
struct Property {
    std::string tool;
    std::string name;
    std::string value;
};

/// What every element has. Several stereotypes are joined with ", "; the word for a kind that is no class in all tools,
/// such as "Actor", is among them where the file has it so.
struct Element {
    std::string id;
    std::string name;
    std::string documentation;
    std::string stereotype;
    std::vector<std::string> notes;       ///< texts of the comments on it
    std::vector<std::string> constraints; ///< texts, without braces
    std::vector<Property> properties;
};

/// A comment or constraint where the file has it. What it is about may stand anywhere in the file, or not in it at all;
/// `settleRemarks` gives the texts to the elements.
struct Remark {
    std::string id;
    std::string text;
    std::vector<std::string> elementIds; ///< of what it hangs at; none: a loose comment
    bool isConstraint = false;
};

/// Number of values; -1 as `upper` is unlimited. `text` is what stood in the file when that is not a pair of numbers.
struct Multiplicity {
    std::int32_t lower = 1;
    std::int32_t upper = 1;
    std::string text;
};

/// How an attribute, or what is at an end of an association, is held.
enum class Containment : std::uint8_t {
    Unspecified,
    ByValue,
    ByReference,
};

/// What calls from several threads of control may do to a class or an operation.
enum class Concurrency : std::uint8_t {
    Sequential,
    Guarded,
    Active,
    Synchronous,
};

struct Attribute : Element {
    Reference type;
    std::string initialValue;
    std::optional<Multiplicity> multiplicity;
    Visibility visibility = Visibility::Private;
    Containment containment = Containment::Unspecified;
    bool isStatic = false;
    bool isDerived = false;
    bool isReadOnly = false;
    bool isIdentifier = false;
};

enum class Direction : std::uint8_t {
    In,
    Out,
    InOut,
};

struct Parameter : Element {
    Reference type;
    std::string initialValue;
    std::optional<Multiplicity> multiplicity;
    Direction direction = Direction::In;
};

struct Operation : Element {
    std::vector<Parameter> parameters; ///< the result not among them
    Reference returnType;
    std::optional<Multiplicity> returnMultiplicity;
    Visibility visibility = Visibility::Public;
    Concurrency concurrency = Concurrency::Sequential;
    bool isStatic = false;
    bool isAbstract = false;
    bool isVirtual = false;
    bool isFriend = false;
    std::string preCondition;
    std::string postCondition;
    std::string semantics;
};

struct Literal : Element {
    std::string value;          ///< empty: the name alone
    bool hasEmptyValue = false; ///< there is a value, which is empty
};

enum class ClassifierKind : std::uint8_t {
    Class,
    Interface,
    DataType,
    PrimitiveType,
    Enumeration,
    AssociationClass,
    Actor,
    UseCase, ///< the host has nothing of this kind
};

/// What a class is that is not only a class.
enum class ClassForm : std::uint8_t {
    Plain,
    Data, ///< it has attributes alone
    Parameterized,
    Instantiated,
    Utility,
    ParameterizedUtility,
    InstantiatedUtility,
    Metaclass,
};

struct Classifier : Element {
    ClassifierKind kind = ClassifierKind::Class;
    ClassForm form = ClassForm::Plain;
    Visibility visibility = Visibility::Public;
    Concurrency concurrency = Concurrency::Sequential;
    bool isAbstract = false;
    bool isPersistent = false;
    bool staysClass = false; ///< a class in the file, and so in the host model, whatever its kind
    std::string cardinality; ///< how many objects there are of it
    std::int32_t space = 0;  ///< of an object, in bytes
    std::vector<Attribute> attributes;
    std::vector<Operation> operations;
    std::vector<Parameter> templateParameters;
    std::vector<Literal> literals; ///< of an enumeration
};

enum class Aggregation : std::uint8_t {
    None,
    Shared,
    Composite,
};

/// One end, at any element of the file. `aggregation` says what the classifier at this end is: the whole (shared or
/// composite) or not.
struct AssociationEnd : Element {
    Reference participant;
    std::optional<Multiplicity> multiplicity;
    Visibility visibility = Visibility::Public;
    Aggregation aggregation = Aggregation::None;
    Containment containment = Containment::Unspecified; ///< left open: that of a part in a composition is by value
    bool isNavigable = false;                           ///< one can go to this end
    bool isStatic = false;
    bool isFriend = false;
    bool isDerived = false;
    std::vector<Attribute> qualifiers; ///< drawn at this end
};

struct Association : Element {
    std::vector<AssociationEnd> ends;
    std::string associationClassId; ///< of the classifier that is its class; empty: none
    bool isDerived = false;
};

enum class RelationshipKind : std::uint8_t {
    Generalization, ///< client: the subtype, supplier: the supertype
    Realization,    ///< client: the implementing class, supplier: the interface
    Dependency,     ///< also usages, abstractions, permissions; the stereotype tells them apart
};

/// Its ends may be any elements of the file, or lie outside of it.
struct Relationship : Element {
    RelationshipKind kind = RelationshipKind::Dependency;
    Visibility visibility = Visibility::Public;
    bool isVirtual = false;
    bool isFriend = false;
    Reference client;
    Reference supplier;
};

struct Point {
    double x = 0;
    double y = 0;
};

/// A box by its left upper corner.
struct Rectangle {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// Colours are 0xRRGGBB. What is not there has the host model's default.
struct Appearance {
    std::optional<std::uint32_t> lineColor;
    std::optional<std::uint32_t> fillColor;
    std::optional<std::uint32_t> fontColor;
    std::string fontName;
    double fontSize = 0; ///< in points; 0: default
};

/// What a box leaves out of its classifier, by `Visibility`. Literals count as public attributes.
struct HiddenFeatures {
    std::array<bool, 4> attributes = {};
    std::array<bool, 4> operations = {};
    std::vector<std::string> features = {}; ///< identifiers of further ones, sorted
};

/// An element, of whatever kind, drawn as a box. `bounds` missing: the tool sizes or places it itself when it opens the
/// file; a width or height of 0 with a place: placed by hand, sized by the tool (the place is the centre in a diagram
/// that keeps its places).
struct Box {
    std::string elementId;
    std::optional<Rectangle> bounds;
    Appearance appearance;
    HiddenFeatures hidden = {};
};

/// The part of an association's line that leads from its middle to one end.
struct LinePart {
    std::optional<Point> place; ///< as the host's files keep it of the end's view
    std::vector<Point> points;  ///< from the middle on; none for a straight part
};

/// An element drawn as a line, from the first end (association), the client (relationship) to the other. `points`
/// holds the whole way from border to border, or the bends alone when `hasEnds` is false.
struct Line {
    std::string elementId;
    std::vector<Point> points;
    bool hasEnds = false;
    Appearance appearance;
    std::optional<Point> middle; ///< of an association whose line the file divides; then `parts` hold its way
    std::vector<LinePart> parts; ///< one for each end
};

enum class DiagramKind : std::uint8_t {
    Class,
    UseCase,
};

/// A diagram of classifiers, packages and what joins them. Diagrams of other kinds do not come here, they are counted
/// in the report.
struct Diagram : Element {
    DiagramKind kind = DiagramKind::Class;
    std::vector<Box> boxes; ///< in drawing order
    std::vector<Line> lines;
    std::vector<Remark> remarks; ///< comments that stand in the diagram alone
    bool keepsPlaces = false;    ///< it was drawn for the host: nothing is enlarged or moved
};

struct Package : Element {
    std::vector<Package> packages;
    std::vector<Classifier> classifiers;
    std::vector<Association> associations;
    std::vector<Relationship> relationships;
    std::vector<Remark> remarks; ///< settled: comments that hang at nothing
    std::vector<Diagram> diagrams;
};

using TextsById = std::unordered_map<std::string, std::string>;

struct Design {
    Package root;     ///< the model itself; its name is the design's name
    std::string tool; ///< program and version that wrote the file, as the file tells; may be empty
    /// What the file calls that which an identifier of it means, e.g. "use case". Needed of all that the design has no
    /// place for: what refers to it must not be taken for a reference to something outside of the file.
    TextsById kinds;
    TextsById outsideNames; ///< of elements outside of the file, as far as it tells them
    /// The Rose file that it was read from, which holds diagrams of kinds that a design has not; or null.
    std::shared_ptr<const reader::Document> document;
    /// Generalizations that share a line to their supertype in diagrams, by identifiers, in the order of the lines.
    std::vector<std::vector<std::string>> trees;
    bool isOrdered = false; ///< packages, and the ends of associations, stand in the order of the host's files already
};

} // namespace design
