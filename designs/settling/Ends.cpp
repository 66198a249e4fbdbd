#include "designs/model/Catalogue.h"
#include "designs/model/Texts.h"
#include "designs/model/Walk.h"
#include "designs/settling/Identifiers.h"
#include "designs/settling/Settling.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design {

namespace {

class EndSettler {
public:
    EndSettler(Design& theDesign, Reach theReach, Report& theReport)
        : design(theDesign), reach(theReach), report(theReport), catalogue(theDesign.root)
    {
    }

    void run()
    {
        addDrawnClasses();
        std::vector<bool> verdicts; // on all relations, in their order
        forEachPackage(design.root, [&](Package& package) {
            for (Association& association : package.associations)
                verdicts.push_back(settle(association));
            for (Relationship& relationship : package.relationships)
                verdicts.push_back(settle(relationship));
        });
        // Only now may elements move: the catalogue is not asked any more.
        auto verdict = verdicts.begin();
        const auto keep = [&](auto& list) { std::erase_if(list, [&](const auto& /*each*/) { return !*verdict++; }); };
        forEachPackage(design.root, [&](Package& package) {
            keep(package.associations);
            keep(package.relationships);
        });
        addPlaceholders();
    }

private:
    // What an identifier of the file means; empty when it means nothing in it.
    [[nodiscard]] std::string kindOf(const std::string& id) const
    {
        if (id.empty())
            return "";
        if (const auto found = design.kinds.find(id); found != design.kinds.end())
            return found->second;
        if (catalogue.package(id))
            return "package";
        return catalogue.has(id) ? "part of a class" : "";
    }

    // Why the reference leads to no class; empty when it does, maybe to a placeholder.
    std::string settle(Reference& reference)
    {
        if (reference.isEmpty())
            return "an end is missing";
        if (const Classifier* const classifier = catalogue.classifierOf(reference)) {
            reference = {classifier->id, classifier->name};
            return "";
        }
        if (const std::string kind = kindOf(reference.id); !kind.empty())
            return "an end is no class but: " + kind;
        reference.id = placeholderFor(reference);
        return "";
    }

    // Identifier of the class that stands for it.
    const std::string& placeholderFor(const Reference& reference)
    {
        const std::string key = reference.id.empty() ? "name " + reference.name : "id " + reference.id;
        const auto [found, isNew] = placeholderIds.emplace(key, reference.id);
        if (isNew) {
            Classifier placeholder;
            placeholder.name = reference.name.empty() ? reference.id : reference.name;
            if (!identifiers)
                identifiers.emplace(design.root);
            if (reference.id.empty() || !identifiers->take(reference.id))
                found->second = identifiers->make();
            placeholder.id = found->second;
            report.made("class", reference.id, placeholder.name,
                        "it lies outside of the file; a placeholder is in the package External");
            placeholders.push_back(std::move(placeholder));
        }
        return found->second;
    }

    // Classes that diagrams show and nothing else mentions stand in front of those that relations end at.
    void addDrawnClasses()
    {
        std::unordered_set<std::string_view> ends;
        forEachReference(design.root, [&](const Reference& reference, bool isType) {
            if (!isType)
                ends.insert(reference.id);
        });
        forEachPackage(design.root, [&](Package& package) {
            for (Diagram& diagram : package.diagrams)
                for (Box& box : diagram.boxes) {
                    const auto name = design.outsideNames.find(box.elementId);
                    if (name != design.outsideNames.end() && !ends.contains(box.elementId) &&
                        kindOf(box.elementId).empty())
                        box.elementId = placeholderFor({box.elementId, name->second});
                }
        });
    }

    bool settle(Association& association)
    {
        std::string reason = association.ends.size() < 2 ? "an end is missing" : "";
        for (AssociationEnd& end : association.ends)
            if (reason.empty())
                reason = settle(end.participant);
        if (!reason.empty()) {
            report.left("association", association.id, association.name, reason);
            return false;
        }
        const std::string& classId = association.associationClassId;
        const Classifier* const byId = catalogue.classifier(classId);
        if (const Classifier* const theClass = byId ? byId : catalogue.classifierNamed(classId);
            theClass && !classId.empty())
            association.associationClassId = theClass->id;
        else if (!association.associationClassId.empty()) {
            report.left("class of an association", association.associationClassId, association.name,
                        "it is not in the file");
            association.associationClassId.clear();
        }
        return true;
    }

    // The same where packages may be ends.
    std::string settleWidely(Reference& reference)
    {
        return reach == Reach::Packages && catalogue.package(reference.id) ? "" : settle(reference);
    }

    bool settle(Relationship& relationship)
    {
        std::string reason = settleWidely(relationship.client);
        if (reason.empty())
            reason = settleWidely(relationship.supplier);
        if (!reason.empty())
            report.left(nameOf(relationship.kind), relationship.id, relationship.name, reason);
        return reason.empty();
    }

    void addPlaceholders()
    {
        if (placeholders.empty())
            return;
        std::vector<Package>& packages = design.root.packages;
        auto found = std::find_if(packages.begin(), packages.end(),
                                  [](const Package& package) { return package.name == placeholderPackage; });
        if (found == packages.end()) {
            Package package;
            package.id = identifiers->make();
            package.name = placeholderPackage;
            package.documentation = "Placeholders for classes outside of the imported file.";
            report.made("package", package.id, package.name, "it holds the placeholders");
            found = packages.insert(packages.end(), std::move(package));
        }
        std::move(placeholders.begin(), placeholders.end(), std::back_inserter(found->classifiers));
    }

    Design& design;
    const Reach reach;
    Report& report;
    Catalogue catalogue;
    std::optional<NewIdentifiers> identifiers; // as soon as there is a placeholder
    std::unordered_map<std::string, std::string> placeholderIds;
    std::vector<Classifier> placeholders;
};

// What the file tells of elements outside of it goes to the references that lead there.
void nameReferences(Design& design)
{
    forEachReference(design.root, [&](Reference& reference, bool /*isType*/) {
        const auto found = reference.name.empty() ? design.outsideNames.find(reference.id) : design.outsideNames.end();
        if (found != design.outsideNames.end())
            reference.name = found->second;
    });
}

} // namespace

void settleEnds(Design& design, Reach reach, Report& report)
{
    nameReferences(design);
    EndSettler(design, reach, report).run();
}

} // namespace design
