#pragma once

#include "designs/formats/ea/write/Identifiers.h"
#include "designs/formats/Format.h"
#include "designs/formats/shared/XmlText.h"

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace design::ea {

/// A comment in a package, on an element or alone.
struct Note {
    std::string id;
    std::string_view text;
    std::string annotated; ///< identifier in the UML tree; empty: none
    std::string drawnAt;   ///< identifier of that in diagrams, where it is a box there
    std::string link;      ///< of the line from the note to it
};

/// An end of an association that is a property of a classifier: the one at the other end.
struct OwnedEnd {
    const Association* association;
    std::size_t index;
};

/// What is written, and what all parts of the writer ask.
class Output {
public:
    Output(const Writing& theWriting, text::Sink& sink, Report& theReport);

    const Writing& writing;
    Report& report;
    Identifiers ids;
    xml::Text xml;

    std::unordered_map<const Package*, std::vector<Note>> notes;
    std::unordered_map<const Diagram*, std::vector<const Note*>> notesOfDiagram; ///< that hang at nothing
    std::unordered_map<std::string, std::vector<const Note*>> notesOn;           ///< boxes, by identifier in diagrams
    std::unordered_map<std::string, std::vector<const Relationship*>> inClient;  ///< relations that the client holds
    std::unordered_map<std::string, std::vector<OwnedEnd>> endsIn;               ///< by identifier of the classifier
    std::unordered_map<std::string, const Association*> associationOf;           ///< by identifier of its class
    /// In the order of the file: those that have a class come with it.
    std::unordered_map<const Package*, std::vector<const Association*>> associations;
    std::vector<std::string> typeNames;                   ///< of types that are no element
    std::unordered_map<std::string, std::string> typeIds; ///< by those

    /// Identifier of the package or of what else has that identifier in the design.
    [[nodiscard]] const std::string& target(const std::string& id);
    /// The same as diagrams and connectors have it: packages are elements with an identifier of their own there.
    [[nodiscard]] const std::string& subject(const std::string& id) { return ids.of(id); }
    [[nodiscard]] const std::string& subject(const Package& package);
    [[nodiscard]] const std::string& idOf(const Package& package) { return ids.of(package, "EAPK_"); }
    [[nodiscard]] const std::string& idOf(const Association& association, std::size_t end);
    /// Of a type; empty for none.
    [[nodiscard]] std::string typeId(const Reference& type);
    [[nodiscard]] std::string typeName(const Reference& type) const;

    [[nodiscard]] bool isInClass(const Association& association) const;
    [[nodiscard]] bool isHeldByClient(const Relationship& relationship) const;
    [[nodiscard]] bool isOwnedByClass(const Association& association, std::size_t end) const;
    /// The whole design has a name of the tool's where it has none.
    [[nodiscard]] std::string_view nameOf(const Package& package) const;
    /// Whether the whole design says something that only an element of a package can.
    [[nodiscard]] bool isRootElement() const;
    void left(std::string_view kind, const Element& element, std::string_view reason) const
    {
        report.left(kind, element.id, element.name, reason);
    }

private:
    std::unordered_map<const Package*, std::string> subjects; // of packages without identifiers

    void collectRelations();
    void collectAssociations();
    void collectNotes(const Package& package, const Package* parent);
    void collectLooseNotes(const Package& package);
    void addNote(const Package& package, std::string_view text, const std::string& annotated,
                 const std::string& drawnAt = {});
};

/// <tags><tag xmi:id="EAID_TV000001" name="cg::Inline" value="True" modelElement="EAID_1"/></tags>
/// Those of features and connectors do not name what they are of.
void writeTags(Output& output, const Element& element, std::string_view id = {});

inline constexpr std::string_view noPlaceFor = "Enterprise Architect has no place for it";

[[nodiscard]] std::string_view wordOf(Visibility visibility);
[[nodiscard]] std::string_view wordOf(Aggregation aggregation);
/// "Public" for "public".
[[nodiscard]] std::string capitalized(std::string_view word);
/// Of the UML tree: "Class", "AssociationClass" ...
[[nodiscard]] std::string_view typeOf(const Output& output, const Classifier& classifier);
/// "Usage" or "Dependency" ...; the stereotype that it stands for is in `impliedStereotype`.
[[nodiscard]] std::string_view typeOf(const Output& output, const Relationship& relationship);
/// Without the word that the type of the element says.
[[nodiscard]] std::string stereotypeBeside(std::string_view stereotype, std::string_view implied);
[[nodiscard]] std::string_view impliedBy(std::string_view type);

} // namespace design::ea
