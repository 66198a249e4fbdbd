#pragma once

#include "designs/formats/Format.h"
#include "text/JsonWriter.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Writes projects of StarUML: every object has a `_type` and an `_id`, and names its owner as `_parent`.
namespace design::staruml {

void write(const Writing& writing, Files& files, Report& report);

/// What the writers of all kinds of objects share.
class Output {
public:
    Output(const Writing& theWriting, text::Sink& sink, Report& theReport);

    /// An identifier that nothing in the file has. The same design gets the same ones.
    [[nodiscard]] std::string newId();

    /// The identifier of an element, also of one that has none by itself.
    [[nodiscard]] std::string idOf(const Element& element);
    /// The identifier of what joins an association and its class.
    [[nodiscard]] const std::string& classLinkOf(const Association& association);

    /// Opens an object that lies in `parent`; an empty one is that of the project, which lies in nothing.
    void begin(std::string_view type, std::string_view id, std::string_view parent);
    /// Opens that of an element with what all elements have, and returns its identifier.
    std::string begin(std::string_view type, const Element& element, std::string_view parent);
    void end();
    /// To be called at the end of the file.
    void finish() { tail.passOn(); }
    void reference(std::string_view key, std::string_view id);
    void textIfAny(std::string_view key, std::string_view text);
    /// As the tool writes it: whole numbers.
    void number(std::string_view key, double value);

    /// The constraints of an element, as members of the list that is open.
    void constraints(const Element& element, std::string_view id, std::initializer_list<std::string_view> flags = {});
    /// The same as the list of what the element owns, where there are any.
    void ownedConstraints(const Element& element, std::string_view id,
                          std::initializer_list<std::string_view> flags = {});

    /// Tells of a property of an element that has no place in the file.
    void leave(std::string_view property, const Element& element) const;
    /// Tells of comments on an element that no diagram shows.
    void leaveNotes(const Element& element) const;

    const Writing& writing;
    Report& report;

private:
    text::Tail tail;

public:
    text::JsonWriter json;

private:
    void constraint(std::string_view text, std::string_view parent);

    std::unordered_set<std::string_view> taken; // of the design, those that are like new ones
    std::unordered_map<const Element*, std::string> madeIds;
    std::unordered_map<const Association*, std::string> classLinks;
    std::size_t last = 0;
};

/// Why something is left.
inline constexpr std::string_view hasNone = "StarUML has none";

[[nodiscard]] std::string_view wordFor(Visibility visibility);
[[nodiscard]] bool hasConstraint(const Element& element, std::string_view flag);
/// The type of the element that a relationship becomes.
[[nodiscard]] std::string_view typeOf(const Relationship& relationship, const Catalogue& catalogue);
[[nodiscard]] std::string_view typeOf(const Classifier& classifier);

/// The relations that lie in the classifier that they come from, as the tool has it.
struct OwnedRelations {
    std::vector<const Association*> associations;
    std::vector<const Relationship*> relationships;
};

// Each writes objects into the list that is open.

void writeClassifier(Output& output, const Classifier& classifier, const OwnedRelations& relations,
                     std::string_view parent);
void writeAttribute(Output& output, const Attribute& attribute, std::string_view parent);
/// With its views. The comments on the elements in `noted` are drawn already; those that are drawn now join them.
void writeDiagram(Output& output, const Diagram& diagram, const Package& package,
                  std::unordered_set<std::string_view>& noted);
void writeRelations(Output& output, const OwnedRelations& relations, std::string_view parent);

} // namespace design::staruml
