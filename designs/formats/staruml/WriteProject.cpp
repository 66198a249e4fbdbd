#include "designs/formats/staruml/Write.h"

#include "designs/model/Walk.h"

#include <unordered_map>

namespace design::staruml {

namespace {

using RelationsByClassifier = std::unordered_map<std::string_view, OwnedRelations>;

class ProjectWriter {
public:
    explicit ProjectWriter(Output& theOutput) : output(theOutput) {}

    void run()
    {
        const Package& root = output.writing.design.root;
        const std::string id = output.begin("Project", root, "");
        writeContent(root, id);
        output.end();
        leaveRemarks();
    }

private:
    // The tool has models in the project, and packages in those.
    void writePackage(const Package& package, std::string_view parent, bool isOutermost)
    {
        const std::string id = output.begin(isOutermost ? "UMLModel" : "UMLPackage", package, parent);
        writeContent(package, id);
        output.json.member("visibility", "public");
        output.end();
    }

    void writeContent(const Package& package, std::string_view id)
    {
        const bool isRoot = &package == &output.writing.design.root;
        output.textIfAny("stereotype", package.stereotype);
        RelationsByClassifier owned;
        for (const Classifier& classifier : package.classifiers)
            owned.emplace(classifier.id, OwnedRelations());
        const OwnedRelations others = relationsOf(package, owned);
        output.json.beginList("ownedElements");
        output.constraints(package, id);
        for (const Diagram& diagram : package.diagrams)
            writeDiagram(output, diagram, package, noted);
        for (const Package& child : package.packages)
            writePackage(child, id, isRoot);
        for (const Classifier& classifier : package.classifiers)
            writeClassifier(output, classifier, owned[classifier.id], id);
        writeRelations(output, others, id);
        output.json.endList();
    }

    // Those that come from a classifier of the package lie in it; returns the others.
    static OwnedRelations relationsOf(const Package& package, RelationsByClassifier& owned)
    {
        OwnedRelations others;
        const auto ownerOf = [&](const std::string& source) -> OwnedRelations& {
            const auto found = owned.find(source);
            return found == owned.end() ? others : found->second;
        };
        for (const Association& association : package.associations)
            ownerOf(association.ends.empty() ? "" : association.ends.front().participant.id)
                .associations.push_back(&association);
        for (const Relationship& relationship : package.relationships)
            ownerOf(relationship.client.id).relationships.push_back(&relationship);
        return others;
    }

    void leaveUnlessNoted(const Element& element) const
    {
        if (!noted.contains(element.id))
            output.leaveNotes(element);
    }

    void leaveRemarks() const
    {
        forEachPackage(output.writing.design.root, [&](const Package& package) {
            leaveUnlessNoted(package);
            for (const Classifier& classifier : package.classifiers)
                leaveUnlessNoted(classifier);
            for (const Association& association : package.associations)
                leaveUnlessNoted(association);
            for (const Relationship& relationship : package.relationships)
                leaveUnlessNoted(relationship);
            if (package.diagrams.empty())
                for (const Remark& remark : package.remarks)
                    output.report.left("note", remark.id, remark.text, "StarUML has notes in diagrams only");
        });
    }

    Output& output;
    std::unordered_set<std::string_view> noted; // whose comments a diagram shows
};

} // namespace

void write(const Writing& writing, Files& files, Report& report)
{
    Output output(writing, files.begin({}), report);
    ProjectWriter(output).run();
    output.finish();
}

} // namespace design::staruml
