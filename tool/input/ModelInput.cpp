#include "tool/input/ModelInput.h"

#include "text/Utf8.h"
#include "tool/terminal/Amounts.h"
#include "tool/terminal/Progress.h"
#include "tool/terminal/Terminal.h"

#include "kiv/KivClass.h"

#include <algorithm>
#include <iostream>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::size_t mostWarnings = 20;
constexpr int hiddenLevel = 2; // of elements that are not written

// `FILE:LINE:COLUMN: MESSAGE`, and on a terminal the line itself.
void tellPlace(const std::string& file, std::size_t line, std::size_t column, const std::string& message,
               const std::string& text)
{
    clearProgress();
    std::cerr << text::onOneLine(file) << ':' << line << ':' << column << ": "
              << inColour(text::onOneLine(message), STDERR_FILENO) << '\n';
    if (isErrorTerminal())
        std::cerr << excerptAt(text, line, column, terminalWidth());
}

std::string messageOf(const ModelWarning& warning)
{
    const std::string& pointer = warning.place.pointer;
    return "warning: " + pointer + (pointer.empty() ? "" : ": ") + warning.text;
}

} // namespace

std::string contentsOf(const KivModel& model)
{
    std::size_t classes = 0;
    std::size_t diagrams = 0;
    std::vector<const KivPackage*> waiting; // packages may lie in each other deeper than any stack
    for (const KivPackage* const package : model.childPackages)
        if (package->elementType == KivElementType::DesignPackage)
            waiting.push_back(package);
    while (!waiting.empty()) {
        const KivPackage& package = *waiting.back();
        waiting.pop_back();
        const auto isClass = [](const KivObject* each) {
            return each && each->elementType == KivElementType::Class &&
                   static_cast<const KivClass&>(*each).modelLevel != hiddenLevel;
        };
        classes += static_cast<std::size_t>(
            std::count_if(package.modelElements.begin(), package.modelElements.end(), isClass));
        diagrams += package.diagrams.count();
        for (const KivPackage* const child : package.childPackages)
            waiting.push_back(child);
    }
    return counted(classes, "class", "classes") + ", " + counted(diagrams, "diagram", "diagrams");
}

bool hasLogicalView(const KivModel& model)
{
    return std::any_of(model.childPackages.begin(), model.childPackages.end(), [](const KivPackage* package) {
        return package->elementType == KivElementType::DesignPackage &&
               package->getName().view().find("Logical View") != std::string_view::npos;
    });
}

std::optional<LoadedModel> takeModelFile(const std::string& text, const std::string& name, KivIds* ids)
{
    try {
        return ids ? parseModel(text, name, *ids) : parseModel(text, name);
    } catch (const ModelFileError& error) {
        for (const ModelFileFault& fault : error.getFaults())
            tellPlace(name, fault.line, fault.column, fault.message(), text);
        if (const std::string rest = restOfFaults(error.getCount() - error.getFaults().size()); !rest.empty())
            std::cerr << text::onOneLine(name) << ": " << rest << '\n';
        return std::nullopt;
    }
}

std::vector<ModelWarning> findWarnings(KivModel& model, const std::string* text, bool needsPlaces)
{
    std::vector<KivFault> faults = findFaults(model);
    if (!needsPlaces)
        std::erase_if(faults, [](const KivFault& fault) { return fault.kind == KivFaultKind::NoPlace; });
    std::vector<ModelWarning> warnings;
    std::vector<ModelFilePart> parts;
    for (KivFault& fault : faults) {
        warnings.push_back({fault.kind, std::move(fault.text)});
        if (fault.kind == KivFaultKind::NoPlace)
            warnings.back().text +=
                warnings.back().text.starts_with("1 ") ? "; --layout places it" : "; --layout places them";
        parts.push_back({fault.object, fault.field});
    }
    if (!text || warnings.empty())
        return warnings;
    const std::vector<ModelFilePlace> places = findPlaces(*text, model, parts);
    for (std::size_t i = 0; i < warnings.size(); ++i)
        warnings[i].place = places[i];
    std::stable_sort(warnings.begin(), warnings.end(), [](const ModelWarning& a, const ModelWarning& b) {
        return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
    });
    return warnings;
}

void tellWarnings(const std::vector<ModelWarning>& warnings, const std::string& name, const std::string& text)
{
    const std::size_t told = std::min(warnings.size(), mostWarnings);
    for (std::size_t i = 0; i < told; ++i) {
        if (warnings[i].hasPlace())
            tellPlace(name, warnings[i].place.line, warnings[i].place.column, messageOf(warnings[i]), text);
        else
            std::cerr << text::onOneLine(name) << ": "
                      << inColour(text::onOneLine(messageOf(warnings[i])), STDERR_FILENO) << '\n';
    }
    if (const std::size_t more = warnings.size() - told; more > 0)
        std::cerr << text::onOneLine(name) << ": " << more
                  << (more == 1 ? " more warning is not shown\n" : " more warnings are not shown\n");
}
