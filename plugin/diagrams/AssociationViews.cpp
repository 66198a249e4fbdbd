#include "diagrams/ClassDiagrams.h"

#include "diagrams/Labels.h"
#include "diagrams/LinePoints.h"
#include "model/ExportState.h"
#include "model/NumberBlocks.h"
#include "model/WrittenElements.h"
#include "petal/PetalWriter.h"

#include <cstdlib>

namespace {

constexpr SegmentLabelShape associationNameLabel = {segmentLabel, 1, 40, "0.500000", 30, 0};
constexpr SegmentLabelShape associationStereotypeLabel = {segmentStereotype, 10, 120, "0.400018", 25, 1};
constexpr SegmentLabelShape associationConstraintLabel = {segmentLabel, 3, 80, "0.929314", 25, 1};
constexpr SegmentLabelShape roleNameLabel = {segmentLabel, 1, 40, "0.500000", 30, 1};
constexpr SegmentLabelShape cardinalityLabel = {segmentLabel, 2, 40, "0.500000", 30, 0};
constexpr SegmentLabelShape roleConstraintLabel = {segmentLabel, 3, 80, "0.929314", 25, 0};

// The association's own point and colour on the diagram.
struct AssociationPlace {
    int view = 0;
    Point point;
    int lineColor = 3342489;
};

AssociationPlace placeOf(const KivAssociation& association, const KivClassDiagram& diagram, int offset)
{
    AssociationPlace place;
    place.view = viewNumber(offset, association.pid);
    if (const KivProjection* const projection = geometryOn(association, diagram)) {
        place.point = {scaledX(projection->x), scaledY(projection->y)};
        place.lineColor = projection->lineColor;
    }
    return place;
}

// Where a role's view and its labels stand.
struct RolePlace {
    Point location;
    Point name;
    Point cardinality;
    Point constraint;
    const KivString* vertices = nullptr;
};

Coordinate widthOf(const KivString& text)
{
    return static_cast<Coordinate>(text.length() * unitsPerCharacter);
}

// Labels to the left or the right of the participant's box, on the side of the association.
void placeBeside(RolePlace& place, const KivProjection& box, bool isRight, const KivAssociationRole& role,
                 const KivString& cardinality)
{
    if (isRight) {
        const Coordinate x = scaledX(Coordinate{box.x} + box.width) + 30;
        place.name.x = place.cardinality.x = place.constraint.x = x;
    } else {
        const Coordinate edge = scaledX(Coordinate{box.x} - box.width);
        place.name.x = edge - widthOf(role.getName());
        place.cardinality.x = place.constraint.x = edge - widthOf(cardinality);
    }
    const Coordinate middle = scaledY(box.y);
    place.name.y = middle - 60;
    place.cardinality.y = middle + 30;
    place.constraint.y = middle + 60;
}

// Labels below or above the participant's box, on the side of the association.
void placeOverOrUnder(RolePlace& place, const KivProjection& box, bool isBelow, const KivString& cardinality)
{
    place.name.y =
        isBelow ? scaledY(Coordinate{box.y} + box.height) + 30 : scaledY(Coordinate{box.y} - box.height) - 60;
    place.cardinality.y = place.name.y + 90;
    place.constraint.y = place.name.y + 120;
    const Coordinate middle = scaledX(box.x);
    place.name.x = middle + 60;
    place.cardinality.x = place.constraint.x = middle - widthOf(cardinality) - 60;
}

// Without the participant's box there is nothing to go by, and everything stands at (0,0).
RolePlace placeOf(const KivAssociationRole& role, const KivClassDiagram& diagram, const Point& association,
                  const KivString& cardinality)
{
    RolePlace place;
    const KivProjection* const box = geometryOn(*role.participant, diagram);
    if (!box)
        return place;
    const Coordinate dx = association.x - scaledX(box->x);
    const Coordinate dy = association.y - scaledY(box->y);
    if (const KivProjection* const projection = projectionOn(role, diagram)) {
        place.location = {scaledX(projection->x), scaledY(projection->y)};
        place.vertices = verticesOf(projection);
    }
    if (place.location == Point())
        place.location = {std::abs(dx), std::abs(dy)};
    // Quotients may be infinite or, 0 over 0, no number at all, which is not greater than anything.
    const double steepness = static_cast<double>(std::abs(dy)) / static_cast<double>(std::abs(dx));
    const double boxSteepness = static_cast<double>(box->height) / static_cast<double>(box->width);
    if (steepness > boxSteepness)
        placeBeside(place, *box, dx > 0, role, cardinality);
    else
        placeOverOrUnder(place, *box, dy > 0, cardinality);
    return place;
}

void printConstraintLabel(const SegmentLabelShape& shape, int number, int parentView, const Point& location,
                          const KivString& constraint)
{
    if (showConstraint && !constraint.isEmpty())
        printSegmentLabel(shape, number, parentView, location, constraint.length(), makeBracedRoseDesc(constraint));
}

void printAssociationLabels(const KivAssociation& association, const AssociationPlace& place, int offset)
{
    const KivString& name = association.getName();
    const KivString& stereotype = association.stereotype;
    const auto [x, y] = place.point;
    if (!name.isEmpty())
        printSegmentLabel(associationNameLabel, viewNumber(offset, association.pid + associationBlock::nameLabel),
                          place.view, {x + 12, y - 60}, name.length(), quoted(name));
    if (!stereotype.isEmpty())
        printSegmentLabel(associationStereotypeLabel,
                          viewNumber(offset, association.pid + associationBlock::stereotypeLabel), place.view,
                          {x + 12, y + 60}, stereotype.length(), quotedStereotype(stereotype));
    printConstraintLabel(associationConstraintLabel,
                         viewNumber(offset, association.pid + associationBlock::constraintLabel), place.view,
                         {x + 12, y + 120}, association.constraint);
}

//     (object RoleView "customer" @30
//     Parent_View \t@26
//     location\t\t(200,0)
//     label      \t(object SegLabel ...)
//     stereotype\tTRUE
//     line_color \t 3342489
//     quidu      \t"3449E000001E"
//     client \t\t@26
//     supplier \t@12
//     line_style\t0)
void printRoleView(const KivAssociationRole& role, const KivClassDiagram& diagram, const AssociationPlace& association,
                   int offset)
{
    const int view = viewNumber(offset, role.pid);
    const KivString cardinality = cardinalityOf(role);
    const RolePlace place = placeOf(role, diagram, association.point, cardinality);
    object([&] {
        line("(object RoleView ", quoted(role.getName()), " @", view);
        line("Parent_View \t@", association.view);
        line("location\t\t", place.location);
        printSegmentLabel(roleNameLabel, viewNumber(offset, role.pid + roleBlock::nameLabel), view, place.name,
                          role.getName().length(), quoted(role.getName()));
        line("stereotype\tTRUE");
        line("line_color \t ", association.lineColor);
        line("quidu      \t", quoted(makeQuid(iquid, role.pid)));
        line("client \t\t@", association.view);
        line("supplier \t@", viewNumber(offset, role.participant->pid));
        printLine(place.vertices ? *place.vertices : KivString());
        if (isShown(cardinality))
            printSegmentLabel(cardinalityLabel, viewNumber(offset, role.pid + roleBlock::cardinalityLabel), view,
                              place.cardinality, cardinality.length(), quoted(cardinality));
        printConstraintLabel(roleConstraintLabel, viewNumber(offset, role.pid + roleBlock::constraintLabel), view,
                             place.constraint, role.constraint);
    });
}

//     (object AssocAttachView "" @30
//     stereotype \tTRUE
//     line_color \t3342489
//     client     \t@26
//     supplier   \t@12
//     line_style \t0)
void printAssociationClassLine(const KivAssociation& association, int offset)
{
    object([&] {
        line("(object AssocAttachView \"\" @", viewNumber(offset, association.pid + associationBlock::classLine));
        line("stereotype \tTRUE");
        line("line_color \t3342489");
        line("client     \t@", viewNumber(offset, association.pid));
        line("supplier   \t@", viewNumber(offset, association.associationClass->pid));
        line("line_style \t0");
    });
}

} // namespace

//     (object AssociationViewNew "places" @26
//     location\t\t(300,100)
//     line_color \t 3342489
//     quidu      \t"3449E600001A"
//     label      \t(object SegLabel ...)
//     roleview_list\t(list RoleViews ...))
int printAssociationsInDiagram(KivClassDiagram* diagram, KivAssociation* association, int offset)
{
    if (isHidden(*association))
        return 0;
    const AssociationPlace place = placeOf(*association, *diagram, offset);
    object([&] {
        line("(object AssociationViewNew ", quoted(association->getName()), " @", place.view);
        line("location\t\t", place.point);
        line("line_color \t ", place.lineColor);
        line("quidu      \t", quoted(makeQuid(asquid, association->pid)));
        printAssociationLabels(*association, place, offset);
        list("roleview_list\t(list RoleViews", [&] {
            for (const KivAssociationRole* const role : association->roles)
                if (isWritten(role))
                    printRoleView(*role, *diagram, place, offset);
        });
    });
    if (association->associationClass)
        printAssociationClassLine(*association, offset);
    return 1;
}
