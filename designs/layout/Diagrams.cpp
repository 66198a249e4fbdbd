#include "designs/layout/Diagrams.h"

#include "designs/layout/Geometry.h"
#include "designs/layout/Scaling.h"
#include "designs/model/Selection.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design {

namespace {

// The identifiers of the classifiers that an association or relationship joins.
std::vector<std::string_view> endsOf(std::string_view id, const Catalogue& catalogue)
{
    std::vector<std::string_view> ends;
    if (const Association* const association = catalogue.association(id)) {
        for (const AssociationEnd& end : association->ends)
            ends.push_back(end.participant.id);
    } else if (const Relationship* const relationship = catalogue.relationship(id)) {
        ends = {relationship->client.id, relationship->supplier.id};
    }
    return ends;
}

class DiagramSettler {
public:
    DiagramSettler(Diagram& theDiagram, Reach theReach, const TextsById& theKinds, const Catalogue& theCatalogue,
                   Report& theReport)
        : diagram(theDiagram), reach(theReach), kinds(theKinds), catalogue(theCatalogue), report(theReport)
    {
    }

    void run()
    {
        std::erase_if(diagram.boxes, [&](const Box& box) { return leave("box", box.elementId, whyNoBox(box)); });
        std::erase_if(diagram.lines, [&](const Line& line) { return leave("line", line.elementId, whyNoLine(line)); });
        openLinesOfOtherBoxes();
        if (!diagram.keepsPlaces && reach == Reach::Classifiers)
            addAssociationClasses(); // without which the host draws none of it
    }

private:
    // Whether there is a reason to leave it.
    bool leave(std::string_view shape, const std::string& id, std::string_view reason)
    {
        if (!reason.empty())
            report.left(shape, id, nameOf(id), reason);
        return !reason.empty();
    }

    [[nodiscard]] std::string_view nameOf(std::string_view id) const
    {
        const Element* element = catalogue.classifier(id);
        if (!element)
            element = catalogue.package(id);
        if (!element)
            element = catalogue.association(id);
        return element ? element->name : diagram.name;
    }

    // What to say of an element that is neither a class nor a relation of classes.
    [[nodiscard]] std::string whyNotShown(const std::string& id) const
    {
        constexpr std::array<std::string_view, 3> notes = {"comment", "note", "note link"};
        const auto kind = kinds.find(id);
        if (kind != kinds.end() && std::find(notes.begin(), notes.end(), kind->second) != notes.end())
            return "notes have no places; they are drawn beside what they hang at, or as texts of the diagram";
        if (catalogue.has(id))
            return "it is taken, and shown with what it belongs to";
        return "what it shows is not taken" + (kind == kinds.end() ? "" : ": " + kind->second);
    }

    std::string whyNoBox(const Box& box)
    {
        if (catalogue.package(box.elementId) && reach == Reach::Packages)
            return shown.insert(box.elementId).second ? "" : "a diagram shows a package once";
        if (catalogue.package(box.elementId))
            return "a Rose file shows the packages of a diagram's package at places of its own";
        if (!catalogue.classifier(box.elementId) && !catalogue.association(box.elementId))
            return whyNotShown(box.elementId);
        if (!shown.insert(box.elementId).second) {
            constexpr std::size_t mostOthers = 20; // each is compared with each line
            std::vector<Rectangle>& others = otherBoxes[box.elementId];
            if (box.bounds && others.size() < mostOthers)
                others.push_back(*box.bounds);
            return reach == Reach::Packages ? "a diagram shows a class once" : "a Rose diagram shows a class once";
        }
        return "";
    }

    std::string whyNoLine(const Line& line)
    {
        const auto ends = endsOf(line.elementId, catalogue);
        if (ends.empty())
            return whyNotShown(line.elementId);
        if (std::any_of(ends.begin(), ends.end(),
                        [&](std::string_view end) { return !shown.contains(std::string(end)); }))
            return "what it joins is not in the diagram";
        if (!drawn.insert(line.elementId).second)
            return reach == Reach::Packages ? "a diagram shows a line once" : "a Rose diagram shows a line once";
        return "";
    }

    // A line to a box that is left, since another one shows its class, has no way to that one.
    void openLinesOfOtherBoxes()
    {
        if (otherBoxes.empty())
            return;
        std::unordered_map<std::string_view, const Rectangle*> places;
        for (const Box& box : diagram.boxes)
            if (box.bounds)
                places.emplace(box.elementId, &*box.bounds);
        const auto leadsElsewhere = [&](std::string_view end, Point point) {
            const auto others = otherBoxes.find(std::string(end));
            const auto place = places.find(end);
            if (others == otherBoxes.end() || place == places.end())
                return false;
            const double own = distance(point, nearestIn(*place->second, point));
            return std::any_of(others->second.begin(), others->second.end(),
                               [&](const Rectangle& other) { return distance(point, nearestIn(other, point)) < own; });
        };
        for (Line& line : diagram.lines) {
            const auto ends = endsOf(line.elementId, catalogue);
            if (!line.hasEnds || line.points.empty() ||
                (!leadsElsewhere(ends.front(), line.points.front()) &&
                 !leadsElsewhere(ends.back(), line.points.back())))
                continue;
            line.points.clear();
            line.hasEnds = false;
        }
    }

    void addAssociationClasses()
    {
        for (const Line& line : diagram.lines) {
            const Association* const association = catalogue.association(line.elementId);
            if (association && !association->associationClassId.empty() &&
                shown.insert(association->associationClassId).second) {
                diagram.boxes.push_back({association->associationClassId, std::nullopt, {}});
                report.made("box", association->associationClassId, nameOf(association->associationClassId),
                            "the line of its association leads to it");
            }
        }
    }

    Diagram& diagram;
    const Reach reach;
    const TextsById& kinds;
    const Catalogue& catalogue;
    Report& report;
    std::unordered_set<std::string> shown;                              // boxes
    std::unordered_map<std::string, std::vector<Rectangle>> otherBoxes; // of what is shown already
    std::unordered_set<std::string> drawn;                              // lines
};

void addOverview(Package& package, const std::vector<const Classifier*>& classes,
                 const std::vector<const Element*>& joints, Report& report)
{
    constexpr std::string_view reason = "it is in an overview";
    Diagram overview;
    overview.name = "Overview";
    report.made("diagram", "", package.name, "the design has none; an overview of the package's classes");
    for (const Classifier* const classifier : classes) {
        overview.boxes.push_back({classifier->id, std::nullopt, {}});
        report.made("box", classifier->id, classifier->name, reason);
    }
    for (const Element* const joint : joints) {
        overview.lines.emplace_back().elementId = joint->id;
        report.made("line", joint->id, joint->name, reason);
    }
    package.diagrams.push_back(std::move(overview));
}

} // namespace

void settleDiagrams(Package& package, Reach reach, const TextsById& kinds, const Catalogue& catalogue, Report& report)
{
    for (Diagram& diagram : package.diagrams)
        DiagramSettler(diagram, reach, kinds, catalogue, report).run();
}

bool showsAnything(const Package& root)
{
    bool shows = false;
    forEachPackage(root, [&](const Package& package) {
        for (const Diagram& diagram : package.diagrams)
            shows = shows || !diagram.boxes.empty();
    });
    return shows;
}

void addOverviews(Package& root, const Catalogue& catalogue, Report& report)
{
    const Selection selection(root, catalogue);
    std::unordered_map<std::string_view, const Package*> homes; // of classes
    std::unordered_map<const Package*, std::vector<const Classifier*>> classes;
    std::unordered_map<const Package*, std::vector<const Element*>> joints;
    forEachPackage(std::as_const(root), [&](const Package& package) {
        for (const Classifier& classifier : package.classifiers)
            if (selection.isClass(classifier)) {
                homes.emplace(classifier.id, &package);
                classes[&package].push_back(&classifier);
            }
    });
    const auto addJoint = [&](const Element& element) {
        const std::vector<std::string_view> ends = endsOf(element.id, catalogue);
        const auto home = homes.find(ends.front());
        const bool isWithin = home != homes.end() && std::all_of(ends.begin(), ends.end(), [&](std::string_view end) {
                                  const auto other = homes.find(end);
                                  return other != homes.end() && other->second == home->second;
                              });
        if (isWithin)
            joints[home->second].push_back(&element);
    };
    forEachPackage(std::as_const(root), [&](const Package& package) {
        for (const Association& association : package.associations)
            addJoint(association);
        for (const Relationship& relationship : package.relationships)
            addJoint(relationship);
    });
    forEachPackage(root, [&](Package& package) {
        if (!classes[&package].empty())
            addOverview(package, classes[&package], joints[&package], report);
    });
}

void settleOrigin(Diagram& diagram, std::size_t subPackages)
{
    constexpr double margin = 16;
    constexpr double unitsInPixel = 3.125;
    constexpr double symbolDistance = 440 / unitsInPixel; // of the symbols of packages that lie in a row
    constexpr double symbolsBottom = 500 / unitsInPixel;
    std::optional<Rectangle> all;
    const auto include = [&](const Rectangle& part) { all = all ? unite(*all, part) : part; };
    for (const Box& box : diagram.boxes)
        if (box.bounds)
            include(*box.bounds);
    for (const Line& line : diagram.lines) {
        for (const Point& point : line.points)
            include({point.x, point.y, 0, 0});
        if (line.middle)
            include({line.middle->x, line.middle->y, 0, 0});
        for (const LinePart& part : line.parts)
            for (const Point& point : part.points)
                include({point.x, point.y, 0, 0});
    }
    if (!all)
        return;
    const double x = all->left < 0 ? margin - all->left : 0;
    double y = all->top < 0 ? margin - all->top : 0;
    const double symbolsRight = static_cast<double>(subPackages) * symbolDistance + margin;
    if (subPackages > 0 && all->top + y < symbolsBottom && all->left + x < symbolsRight)
        y = symbolsBottom + 2 * margin - all->top;
    place(diagram, 1, {x, y});
}

} // namespace design
