#include "designs/convert/ModelLayout.h"

#include "designs/convert/ModelBuilder.h"
#include "designs/convert/Projections.h"
#include "designs/layout/Diagrams.h"
#include "designs/layout/Layout.h"

#include <algorithm>
#include <deque>
#include <string>
#include <unordered_map>
#include <utility>

namespace design {

namespace {

constexpr int hiddenLevel = 2;

KivProjection* projectionOn(const KivModelObject& object, const KivDiagram& diagram)
{
    const auto found = std::find_if(object.projections.begin(), object.projections.end(),
                                    [&](const KivProjection* each) { return each && each->diagram == &diagram; });
    return found == object.projections.end() ? nullptr : *found;
}

Classifier classifierOf(const KivClass& theClass)
{
    Classifier classifier;
    classifier.name = theClass.getName().view();
    classifier.stereotype = theClass.stereotype.view();
    for (const KivAttribute* const each : theClass.attributes) {
        Attribute& attribute = classifier.attributes.emplace_back();
        attribute.name = each->getName().view();
        attribute.initialValue = each->initialValue.view();
        attribute.type.name = each->type ? each->type->getName().view() : std::string_view();
    }
    for (const KivOperation* const each : theClass.operations)
        classifier.operations.emplace_back().name = each->getName().view();
    return classifier;
}

// The parts of a model that its diagrams without places show, as a layout knows them.
class ModelLayout {
public:
    ModelLayout(std::unique_ptr<KivModel> model, Report& theReport)
        : report(theReport), builder(theReport, std::move(model))
    {
    }

    std::unique_ptr<KivModel> run()
    {
        collect(builder.model());
        const Catalogue catalogue(root);
        Projections projections(catalogue);
        for (Drawing& drawing : drawings)
            place(drawing, catalogue, projections);
        for (const auto& [object, id] : ids) {
            if (object->elementType == KivElementType::Association)
                projections.addTo(static_cast<KivAssociation&>(*object), id, builder);
            else
                projections.addTo(*object, id, builder);
        }
        return builder.release();
    }

private:
    // A diagram with boxes to be placed or sized.
    struct Drawing {
        KivClassDiagram* target;
        Diagram diagram;
        bool isWhole = true; // no box has a place
    };

    void collect(KivPackage& package)
    {
        for (KivDiagram* const diagram : package.diagrams)
            if (diagram->elementType == KivElementType::ClassDiagram)
                collect(static_cast<KivClassDiagram&>(*diagram));
        for (KivPackage* const child : package.childPackages)
            collect(*child);
    }

    void collect(KivClassDiagram& target)
    {
        Drawing drawing = {&target, {}};
        bool isComplete = true;
        for (KivModelObject* const element : target.elements) {
            if (element->elementType != KivElementType::Class || element->modelLevel == hiddenLevel)
                continue;
            auto& theClass = static_cast<KivClass&>(*element);
            const KivProjection* const projection = projectionOn(theClass, target);
            isComplete = isComplete && projection && projection->width != 0 && projection->height != 0;
            drawing.isWhole = drawing.isWhole && !projection;
            drawing.diagram.boxes.push_back(boxOf(theClass, projection));
        }
        if (isComplete)
            return;
        for (KivModelObject* const element : target.elements)
            if (!projectionOn(*element, target))
                addLine(*element, drawing.diagram);
        drawings.push_back(std::move(drawing));
    }

    Box boxOf(KivClass& theClass, const KivProjection* projection)
    {
        Box box = {idOf(theClass), std::nullopt, {}};
        if (projection) {
            const double width = inPixels(projection->width);
            const double height = inPixels(projection->height);
            box.bounds = {inPixels(projection->x) - width / 2, inPixels(projection->y) - height / 2, width, height};
            box.appearance.fontSize = projection->fontSize;
        }
        return box;
    }

    void addLine(KivModelObject& element, Diagram& diagram)
    {
        switch (element.elementType) {
        case KivElementType::Association:
            return addAssociation(static_cast<KivAssociation&>(element), diagram);
        case KivElementType::Generalization: {
            auto& line = static_cast<KivGeneralization&>(element);
            if (line.subtypes.count() == 1 && line.supertypes.count() == 1)
                addRelationship(line, RelationshipKind::Generalization, line.subtypes.at(0), line.supertypes.at(0),
                                diagram);
            return;
        }
        case KivElementType::Dependency: {
            auto& line = static_cast<KivDependency&>(element);
            return addRelationship(line, RelationshipKind::Dependency, line.client, line.supplier, diagram);
        }
        case KivElementType::Realization: {
            auto& line = static_cast<KivRealization&>(element);
            return addRelationship(line, RelationshipKind::Realization, line.client, line.supplier, diagram);
        }
        default:
            return;
        }
    }

    void addAssociation(KivAssociation& association, Diagram& diagram)
    {
        const auto& roles = association.roles;
        if (roles.count() != 2 || !roles.at(0)->participant || !roles.at(1)->participant)
            return;
        diagram.lines.emplace_back().elementId = known(association, [&](const std::string& id) {
            Association& added = root.associations.emplace_back();
            added.id = id;
            for (const KivAssociationRole* const role : roles)
                added.ends.emplace_back().participant.id = idOf(*role->participant);
        });
    }

    void addRelationship(KivRelationship& relationship, RelationshipKind kind, KivClass* client, KivClass* supplier,
                         Diagram& diagram)
    {
        if (!client || !supplier)
            return;
        diagram.lines.emplace_back().elementId = known(relationship, [&](const std::string& id) {
            Relationship& added = root.relationships.emplace_back();
            added.id = id;
            added.kind = kind;
            added.client.id = idOf(*client);
            added.supplier.id = idOf(*supplier);
        });
    }

    std::string idOf(KivClass& theClass)
    {
        return known(theClass, [&](const std::string& id) {
            root.classifiers.push_back(classifierOf(theClass));
            root.classifiers.back().id = id;
        });
    }

    // The id of an object, which is made known when it is asked for the first time.
    template <class Add>
    std::string known(KivModelObject& object, Add add)
    {
        const auto [place, isNew] = idOfObject.try_emplace(&object, std::to_string(ids.size()));
        std::string id = place->second;
        if (isNew) {
            ids.emplace_back(&object, id);
            add(id);
        }
        return id;
    }

    void place(Drawing& drawing, const Catalogue& catalogue, Projections& projections)
    {
        const std::vector<Box> before = drawing.diagram.boxes;
        if (!layOut(drawing.diagram, catalogue, budget))
            report.made("layout", "", std::string(drawing.target->getName().view()),
                        "there are too many boxes and lines to lay out; the boxes of the diagram stand in rows");
        if (drawing.isWhole)
            settleOrigin(drawing.diagram, countSymbols(*drawing.target->package));
        else
            leadAround(drawing.diagram, catalogue);
        for (std::size_t i = 0; i < before.size(); ++i)
            if (before[i].bounds)
                size(*drawing.target, drawing.diagram.boxes[i]);
        projections.add(drawing.diagram, *drawing.target);
    }

    // A box that was only placed gets its size about that place.
    void size(const KivClassDiagram& target, const Box& box)
    {
        KivProjection& projection = *projectionOn(*ids[std::stoul(box.elementId)].first, target);
        projection.width = projection.width != 0 ? projection.width : inUnits(box.bounds->width);
        projection.height = projection.height != 0 ? projection.height : inUnits(box.bounds->height);
    }

    // Symbols of packages that a Rose file shows on the diagrams of their parent. All stand below the Logical View.
    std::size_t countSymbols(const KivPackage& package)
    {
        const bool isTop = package.getParent() == &builder.model() &&
                           package.getName().view().find("Logical View") != std::string_view::npos;
        return package.childPackages.count() + (isTop ? builder.model().childPackages.count() - 1 : 0);
    }

    Report& report;
    LayoutBudget budget;
    ModelBuilder builder;
    Package root;
    std::vector<Drawing> drawings;
    std::unordered_map<const KivModelObject*, std::string> idOfObject;
    std::vector<std::pair<KivModelObject*, std::string>> ids; // in the order of the ids
};

} // namespace

std::unique_ptr<KivModel> placeBoxes(std::unique_ptr<KivModel> model, Report& report)
{
    return ModelLayout(std::move(model), report).run();
}

} // namespace design
