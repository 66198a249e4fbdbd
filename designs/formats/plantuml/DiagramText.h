#pragma once

#include "designs/formats/drawn/Aliases.h"
#include "designs/formats/plantuml/Links.h"
#include "designs/formats/plantuml/PlantUml.h"

#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace design::plantuml {

using Colour = std::optional<std::uint32_t>;

/// What is drawn as a figure where nothing has members.
[[nodiscard]] inline bool isFigure(const Classifier& classifier)
{
    return classifier.kind == ClassifierKind::Actor || classifier.kind == ClassifierKind::UseCase;
}

/// The text of one diagram of classes or use cases while it is written.
class DiagramText {
public:
    DiagramText(const Diagram& theDiagram, const Package& owner, const Common& theCommon);

    [[nodiscard]] std::string write();

private:
    void findKinds();
    [[nodiscard]] bool needsDiamond() const;
    void addHead();
    void addGroup(std::size_t place, const std::string& indentation);
    void addNotes(const std::string& id);
    void addNote(const std::string& text, const std::string* target);

    void addClassifier(const Classifier& classifier, const Box& box, const std::string& indentation);
    void addMembers(const Classifier& classifier, const Box& box, const std::string& indentation);
    void addLiteral(const Literal& literal, const std::string& indentation);
    template <class Feature>
    void addMember(const Feature& feature, const std::string& text, bool isAbstract, const std::string& indentation);

    void addBoxesOfAssociations();
    void addLine(const Line& line);
    void addAssociation(const Association& association, const Line& line);
    void tellAssociation(const Association& association);
    void addDiamond(const Association& association, const std::string& lineColour);
    void addRelationship(const Relationship& relationship, const Line& line);
    void addLinkNotes(const std::vector<std::string>& notes);
    [[nodiscard]] LinkEnd endOf(const AssociationEnd& end, bool hasArrow) const;
    [[nodiscard]] std::string colourOf(const Line& line) const;
    /// Empty when the diagram does not show it.
    [[nodiscard]] std::string aliasOf(const std::string& id) const;
    [[nodiscard]] const Box* boxOf(const std::string& id) const;

    const Diagram& diagram;
    const Common& common;
    const Catalogue& catalogue;
    const Groups groups;
    Aliases aliases;
    const Colour usualFill;
    const Colour usualLine;
    std::unordered_map<std::string, const Box*> boxes;
    std::set<std::pair<std::string, std::string>> pairs; ///< that an association joins
    bool hasClasses = false;                             ///< else actors and use cases alone
    bool isMixed = false;                                ///< classes beside these
    std::string out;
};

} // namespace design::plantuml
