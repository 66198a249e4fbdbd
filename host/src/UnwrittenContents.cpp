#include "UnwrittenContents.h"

#include <string>
#include <vector>

namespace {

// `3 classes and 1 diagram`; empty for nothing.
std::string asText(const UnwrittenContents::Counts& contents)
{
    std::vector<std::string> parts;
    if (contents.classes > 0)
        parts.push_back(counted(contents.classes, "class", "classes"));
    if (contents.associations > 0)
        parts.push_back(counted(contents.associations, "association", "associations"));
    if (contents.diagrams > 0)
        parts.push_back(counted(contents.diagrams, "diagram", "diagrams"));
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i)
        text += (i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ") + parts[i];
    return text;
}

} // namespace

UnwrittenContents::Counts& UnwrittenContents::with(const KivPackage& lost)
{
    const auto [place, isNew] = countsOf.try_emplace(&lost);
    if (isNew)
        packages.push_back(&lost);
    return place->second;
}

void UnwrittenContents::find(const KivModel& model, FaultList& list) const
{
    for (const KivPackage* const package : packages)
        add(model, *package, list);
}

void UnwrittenContents::add(const KivModel& model, const KivPackage& package, FaultList& list) const
{
    const Counts& contents = countsOf.at(&package);
    const std::string what = asText(contents);
    const bool isOne = contents.classes + contents.associations + contents.diagrams == 1;
    const std::string lost = isOne ? " is not written" : " are not written";
    if (what.empty())
        return;
    if (&package == &model)
        list.add(KivFaultKind::NotWritten, model,
                 contents.classes + contents.associations > 0 ? "modelElements" : "diagrams",
                 what + lost + ", for only what is in a package is");
    else if (!isDesignPackage(package))
        list.add(KivFaultKind::NotWritten, package, "kind",
                 named("package", package) + " is no design package, so " + what + " in it" + lost);
    else
        list.add(KivFaultKind::NotWritten, package, "name",
                 named("package", package) + " is not the root of the packages, so " + what + " in it" + lost);
}
