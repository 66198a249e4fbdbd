#include "designs/convert/Convert.h"

#include "designs/convert/Classes.h"
#include "designs/convert/Documentation.h"
#include "designs/convert/Generalizations.h"
#include "designs/convert/OtherKinds.h"
#include "designs/convert/Projections.h"
#include "designs/convert/Relations.h"
#include "designs/model/Walk.h"

namespace design {

namespace {

class ModelConverter {
public:
    ModelConverter(const Design& design, const Catalogue& theCatalogue, Report& theReport)
        : root(design.root), report(theReport), selection(design.root, theCatalogue), builder(report),
          types(builder, theCatalogue, selection, report), features(builder, types),
          relations(builder, features, classes), projections(theCatalogue), generalizations(design, theCatalogue)
    {
    }

    Converted run()
    {
        forEachPackage(root, [this](const Package& package) { prepare(package); });
        builder.describe(builder.model(), root, documentationOf(root));
        convertChildren(root, builder.model());
        generalizations.makeRest([this](const auto& members) { addGeneralization(members); });
        forEachPackage(root, [this](const Package& package) {
            for (const Diagram& diagram : package.diagrams)
                showElements(diagram);
        });
        tellOtherKinds(root, selection, report);
        return builder.finish();
    }

private:
    // What others refer to is there before its content.
    void prepare(const Package& package)
    {
        for (const Classifier& classifier : package.classifiers)
            if (selection.isClass(classifier))
                classes.emplace(classifier.id, builder.create<KivClass>());
        for (const Diagram& diagram : package.diagrams) {
            auto* const added = builder.create<KivClassDiagram>();
            diagrams.emplace(&diagram, added);
            projections.add(diagram, *added);
        }
    }

    void convertChildren(const Package& parent, KivPackage& target)
    {
        for (const Package& package : parent.packages) {
            builder.count(Kind::Packages);
            auto* const added = builder.create<KivDesignPackage>(package, documentationOf(package));
            addElements(package, *added);
            convertChildren(package, *added);
            for (const Diagram& diagram : package.diagrams)
                addDiagram(diagram, *added);
            target.addChildPackage(added);
        }
    }

    void addElements(const Package& package, KivPackage& target)
    {
        for (const Classifier& classifier : package.classifiers) {
            const auto found = classes.find(classifier.id);
            if (found == classes.end()) {
                types.add(classifier);
                continue;
            }
            features.fill(*found->second, classifier);
            projections.addTo(*found->second, classifier.id, builder);
            target.modelElements.add(found->second);
        }
        const auto add = [&](const auto& relation) {
            auto* const added = relations.create(relation);
            relationships.emplace(relation.id, added);
            projections.addTo(*added, relation.id, builder);
            target.modelElements.add(added);
        };
        for (const Association& association : package.associations)
            add(association);
        home = &target;
        for (const Relationship& relationship : package.relationships)
            if (relationship.kind == RelationshipKind::Generalization)
                generalizations.meet(relationship, [this](const auto& members) { addGeneralization(members); });
            else
                add(relationship);
        for (const Remark& comment : package.remarks)
            target.modelElements.add(builder.createNote(package, comment.text));
    }

    // What waited comes into the package in which it can be made.
    void addGeneralization(const std::vector<const Relationship*>& members)
    {
        KivGeneralization* added = nullptr;
        for (const Relationship* const member : members) {
            if (added)
                relations.addSubtype(*added, *member);
            else
                added = static_cast<KivGeneralization*>(relations.create(*member));
            relationships.emplace(member->id, added);
            projections.addTo(*added, member->id, builder);
        }
        home->modelElements.add(added);
    }

    void addDiagram(const Diagram& diagram, KivPackage& target)
    {
        builder.count(Kind::Diagrams);
        KivClassDiagram* const added = diagrams.at(&diagram);
        builder.describe(*added, diagram, documentationOf(diagram));
        added->package = &target;
        target.diagrams.add(added);
    }

    // Boxes of associations are symbols in their lines, and come with these.
    void showElements(const Diagram& diagram)
    {
        KivLinkTree<KivModelObject>& elements = diagrams.at(&diagram)->elements;
        for (const Box& box : diagram.boxes)
            if (const auto shown = classes.find(box.elementId); shown != classes.end()) {
                builder.count(Kind::Boxes);
                elements.add(shown->second);
            } else {
                report.left("box", box.elementId, "", "a Rose file has the symbol of an association with its line");
            }
        builder.count(Kind::Lines, diagram.lines.size());
        for (const Line& line : diagram.lines)
            elements.add(relationships.at(line.elementId));
    }

    const Package& root;
    Report& report;
    const Selection selection;
    ModelBuilder builder;
    TypeTable types;
    ClassConverter features;
    ClassesById classes;
    RelationConverter relations;
    Projections projections;
    Generalizations generalizations;
    KivPackage* home = nullptr;                                           // the package that is filled
    std::unordered_map<std::string_view, KivRelationship*> relationships; // and associations, by identifier
    std::unordered_map<const Diagram*, KivClassDiagram*> diagrams;
};

} // namespace

Converted convert(const Design& design, const Catalogue& catalogue, Report& report)
{
    return ModelConverter(design, catalogue, report).run();
}

} // namespace design
