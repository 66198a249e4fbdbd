#include "designs/model/References.h"

#include "designs/model/Catalogue.h"
#include "designs/model/Kinds.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace design {

namespace {

constexpr const char* placeholderPackage = "External";

// Identifiers that no element of the file has.
class NewIdentifiers {
public:
    explicit NewIdentifiers(std::unordered_set<std::string> theTaken) : taken(std::move(theTaken)) {}

    [[nodiscard]] bool take(const std::string& id) { return taken.insert(id).second; }
    std::string make()
    {
        std::string id;
        do {
            id = "petal-" + std::to_string(++last);
        } while (!take(id));
        return id;
    }

private:
    std::unordered_set<std::string> taken;
    std::size_t last = 0;
};

std::unordered_set<std::string> identifiersIn(Package& root)
{
    std::unordered_set<std::string> ids;
    forEachElement(root, [&](const Element& element) { ids.insert(element.id); });
    return ids;
}

void requireIdentifier(Element& element, NewIdentifiers& identifiers)
{
    if (element.id.empty())
        element.id = identifiers.make();
}

class EndResolver {
public:
    EndResolver(Design& theDesign, Report& theReport)
        : design(theDesign), report(theReport), catalogue(theDesign.root), identifiers(identifiersIn(theDesign.root))
    {
    }

    void run()
    {
        std::vector<bool> verdicts; // of all relations, in their order
        forEachPackage(design.root, [&](Package& package) {
            for (Association& association : package.associations)
                verdicts.push_back(resolveAssociation(association));
            for (Relationship& relationship : package.relationships)
                verdicts.push_back(resolveRelationship(relationship));
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
    // Why the reference leads to no class; empty when it does, maybe to a placeholder.
    std::string resolve(Reference& reference)
    {
        if (reference.isEmpty())
            return "an end is missing";
        if (const Classifier* const classifier = catalogue.classifierOf(reference)) {
            reference = {classifier->id, classifier->name};
            return "";
        }
        if (catalogue.package(reference.id))
            return "it ends at a package, and the host model joins classes only";
        if (catalogue.has(reference.id))
            return "it does not end at a class";
        usePlaceholder(reference);
        return "";
    }

    void usePlaceholder(Reference& reference)
    {
        const std::string key = reference.id.empty() ? "name " + reference.name : "id " + reference.id;
        const auto [found, isNew] = placeholderIds.emplace(key, reference.id);
        if (isNew) {
            Classifier placeholder;
            placeholder.name = reference.name.empty() ? reference.id : reference.name;
            placeholder.id =
                !reference.id.empty() && identifiers.take(reference.id) ? reference.id : identifiers.make();
            found->second = placeholder.id;
            report.made("class", reference.id, placeholder.name,
                        "it lies outside of the file; a placeholder is in the package External");
            placeholders.push_back(std::move(placeholder));
        }
        reference.id = found->second;
    }

    bool resolveAssociation(Association& association)
    {
        std::string reason = association.ends.size() < 2 ? "an end is missing" : "";
        for (AssociationEnd& end : association.ends)
            if (reason.empty())
                reason = resolve(end.participant);
        if (!reason.empty()) {
            report.left("association", association.id, association.name, reason);
            return false;
        }
        if (!association.associationClassId.empty() && !catalogue.classifier(association.associationClassId)) {
            report.left("association class", association.associationClassId, association.name, "it is not in the file");
            association.associationClassId.clear();
        }
        return true;
    }

    bool resolveRelationship(Relationship& relationship)
    {
        std::string reason = resolve(relationship.client);
        if (reason.empty())
            reason = resolve(relationship.supplier);
        if (!reason.empty())
            report.left(keyOf(relationship.kind), relationship.id, relationship.name, reason);
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
            package.id = identifiers.make();
            package.name = placeholderPackage;
            package.documentation = "Placeholders for classes outside of the imported file.";
            found = packages.insert(packages.end(), std::move(package));
        }
        std::move(placeholders.begin(), placeholders.end(), std::back_inserter(found->classifiers));
    }

    Design& design;
    Report& report;
    Catalogue catalogue;
    NewIdentifiers identifiers;
    std::unordered_map<std::string, std::string> placeholderIds;
    std::vector<Classifier> placeholders;
};

} // namespace

void giveIdentifiers(Design& design, Report& report)
{
    NewIdentifiers identifiers(identifiersIn(design.root));
    std::unordered_set<std::string> met;
    forEachElement(design.root, [&](Element& element) {
        if (element.id.empty() || met.insert(element.id).second)
            return;
        report.made("identifier", element.id, element.name, "it is given twice; the second element got another one");
        element.id = identifiers.make();
    });
    forEachPackage(design.root, [&](Package& package) {
        for (Classifier& classifier : package.classifiers) {
            requireIdentifier(classifier, identifiers);
            for (Attribute& attribute : classifier.attributes)
                if (attribute.isIdentifier)
                    requireIdentifier(attribute, identifiers);
        }
        for (Association& association : package.associations)
            requireIdentifier(association, identifiers);
        for (Relationship& relationship : package.relationships)
            requireIdentifier(relationship, identifiers);
        for (Diagram& diagram : package.diagrams)
            requireIdentifier(diagram, identifiers);
    });
}

void resolveEnds(Design& design, Report& report)
{
    EndResolver(design, report).run();
}

} // namespace design
