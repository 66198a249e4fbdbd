#include "designs/formats/uml2/Uml2.h"

#include "designs/model/Naming.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace design::uml2 {

namespace {

using Identifiers = std::unordered_set<std::string_view>;
using RemarksOf = std::unordered_map<std::string_view, std::vector<const Remark*>>;

RemarksOf byElement(const std::vector<Remark>& remarks)
{
    RemarksOf result;
    for (const Remark& remark : remarks)
        result[remark.elementId].push_back(&remark);
    return result;
}

/// Notes whose element was not found hang at nothing, in the package in which they stand.
void giveLooseNotes(Package& root, const std::vector<const Remark*>& notes)
{
    std::unordered_map<std::string_view, std::vector<const Remark*>> byPackage;
    for (const Remark* const note : notes)
        byPackage[note->packageId].push_back(note);
    forEachPackage(root, [&byPackage](Package& package) {
        const auto found = byPackage.find(package.id);
        if (found == byPackage.end())
            return;
        for (const Remark* const note : found->second)
            package.looseNotes.push_back(note->text);
        byPackage.erase(found);
    });
}

void giveRemarks(Model& model)
{
    const RemarksOf notes = byElement(model.notes);
    const RemarksOf constraints = byElement(model.constraints);
    Identifiers noted;
    const auto give = [](const RemarksOf& remarks, const Element& element, std::vector<std::string>& texts) {
        const auto found = remarks.find(element.id);
        if (found == remarks.end() || element.id.empty())
            return false;
        for (const Remark* const remark : found->second)
            texts.push_back(remark->text);
        return true;
    };
    forEachElement(model.design.root, [&](Element& element) {
        if (give(notes, element, element.notes))
            noted.insert(notes.find(element.id)->first);
        give(constraints, element, element.constraints);
        const auto found = model.stereotypes.find(element.id);
        if (found != model.stereotypes.end())
            addWord(element.stereotype, found->second);
    });
    std::vector<const Remark*> loose;
    for (const Remark& note : model.notes) {
        if (!noted.contains(note.elementId))
            loose.push_back(&note);
    }
    giveLooseNotes(model.design.root, loose);
}

/// Why an end cannot be what a reference leads to; empty if it can.
std::string objection(const Model& model, const Identifiers& classifiers, const Reference& reference)
{
    if (reference.isEmpty())
        return "an end is not in the file";
    const auto kind = model.kinds.find(reference.id);
    if (kind == model.kinds.end() || classifiers.contains(reference.id))
        return {};
    return "an end is no class but: " + plainWords(kind->second);
}

void leaveRelations(const Model& model, const Identifiers& classifiers, Package& package, Report& report)
{
    std::erase_if(package.associations, [&](const Association& association) {
        std::string reason = association.ends.size() < 2 ? "has less than two ends" : "";
        for (const AssociationEnd& end : association.ends) {
            if (reason.empty())
                reason = objection(model, classifiers, end.participant);
        }
        if (!reason.empty())
            report.left("association", association.id, association.name, reason);
        return !reason.empty();
    });
    std::erase_if(package.relationships, [&](const Relationship& relationship) {
        std::string reason = objection(model, classifiers, relationship.client);
        if (reason.empty())
            reason = objection(model, classifiers, relationship.supplier);
        if (!reason.empty())
            report.left(relationship.kind == RelationshipKind::Realization ? "realization" : "dependency",
                        relationship.id, relationship.name, reason);
        return !reason.empty();
    });
}

Identifiers takenIdentifiers(Package& root)
{
    Identifiers taken;
    forEachElement(root, [&taken](const Element& element) { taken.insert(element.id); });
    return taken;
}

/// Boxes of what was not taken. Those of elements outside the file stay.
void leaveBoxes(const Model& model, const Identifiers& taken, Package& package, Report& report)
{
    for (Diagram& diagram : package.diagrams) {
        std::erase_if(diagram.boxes, [&](const Box& box) {
            const auto kind = model.kinds.find(box.elementId);
            if (taken.contains(box.elementId) || kind == model.kinds.end())
                return false;
            const bool isNote = kind->second == "Comment" || kind->second == "Note";
            report.left("drawn " + plainWords(kind->second), box.elementId, diagram.name,
                        isNote ? "notes are drawn beside what they hang at" : "what it shows was not taken");
            return true;
        });
    }
}

/// Classes outside the file that diagrams show have no other mention; those that relations end at are found there.
void addOutsideClasses(Model& model, const Identifiers& taken, Report& report)
{
    std::unordered_set<std::string> known;
    forEachReference(model.design.root, [&known](const Reference& reference, bool isType) {
        if (!isType)
            known.insert(reference.id);
    });
    Package external;
    external.name = "External";
    forEachPackage(model.design.root, [&](const Package& package) {
        for (const Diagram& diagram : package.diagrams) {
            for (const Box& box : diagram.boxes) {
                const auto name = model.outsideNames.find(box.elementId);
                if (name == model.outsideNames.end() || taken.contains(box.elementId) ||
                    !known.insert(box.elementId).second)
                    continue;
                Classifier placeholder;
                placeholder.id = box.elementId;
                placeholder.name = name->second;
                report.made("class", box.elementId, placeholder.name,
                            "it lies outside of the file and is drawn; a placeholder is in the package External");
                external.classifiers.push_back(std::move(placeholder));
            }
        }
    });
    if (!external.classifiers.empty())
        model.design.root.packages.push_back(std::move(external));
}

} // namespace

Design finish(Model model, Report& report)
{
    giveRemarks(model);
    Identifiers classifiers;
    forEachPackage(model.design.root, [&classifiers](const Package& package) {
        for (const Classifier& classifier : package.classifiers)
            classifiers.insert(classifier.id);
    });
    forEachPackage(model.design.root, [&](Package& package) { leaveRelations(model, classifiers, package, report); });
    const Identifiers taken = takenIdentifiers(model.design.root);
    forEachPackage(model.design.root, [&](Package& package) { leaveBoxes(model, taken, package, report); });
    addOutsideClasses(model, taken, report);
    return std::move(model.design);
}

} // namespace design::uml2
