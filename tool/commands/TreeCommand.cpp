#include "tool/commands/Commands.h"

#include "tool/output/FileRoles.h"
#include "tool/terminal/Findings.h"

#include "text/Files.h"
#include "text/Utf8.h"

#include "compare/report/FullText.h"

#include "reader/index/Index.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <new>

namespace {

using reader::Object;

// Features, relations and what is in interactions and state machines have no lines, save associations.
bool isInOutline(const reader::KnownKind& kind)
{
    using reader::ElementKind;
    return kind.element == ElementKind::package || kind.element == ElementKind::classifier ||
           kind.element == ElementKind::component || kind.element == ElementKind::node || kind.keyword == "Association";
}

constexpr std::string_view viewKeys[] = {"root_usecase_package", "root_category", "root_subsystem",
                                         "process_structure"};

class Outline {
public:
    Outline(const reader::Document& document, std::size_t depth) : document(document), index(document), depth(depth) {}

    void print()
    {
        std::vector<Open> open = {{&document.root(), 0}};
        while (!open.empty()) {
            const Open next = open.back();
            open.pop_back();
            const std::string line = lineOf(*next.object);
            if (!line.empty())
                std::cout << std::string(2 * next.level, ' ') << text::onOneLine(line) << '\n';
            const std::size_t level = next.level + (line.empty() ? 0 : 1);
            if (reader::diagramKindOf(*next.object) || level >= depth)
                continue;
            const auto children = reader::childrenOf(*next.object);
            std::for_each(children.rbegin(), children.rend(), [&](const Object* child) {
                open.push_back({child, level});
            });
        }
    }

private:
    struct Open {
        const Object* object;
        std::size_t level;
    };

    // The four views are called by their names.
    [[nodiscard]] bool isView(const Object& object) const
    {
        const auto isOneOfThem = [&](std::string_view key) { return document.root().object(key) == &object; };
        return std::any_of(std::begin(viewKeys), std::end(viewKeys), isOneOfThem);
    }

    [[nodiscard]] std::string lineOf(const Object& object) const
    {
        if (isView(object))
            return object.is("Processes") ? "Deployment View" : object.name();
        if (const auto kind = reader::diagramKindOf(object))
            return std::string(reader::diagramKindName(*kind)) + " diagram " + object.name();
        const reader::KnownKind* const kind = reader::knownKindOf(object);
        if (!kind || !isInOutline(*kind))
            return {};
        return std::string(kind->word) + nameOf(object) + stereotypeOf(object) + unitOf(object);
    }

    [[nodiscard]] std::string nameOf(const Object& object) const
    {
        const std::string name = reader::shownName(object);
        std::string result = name.empty() ? "" : " " + name;
        if (!object.is("Association"))
            return result;
        std::string ends;
        for (const Object* const role : object.objects("roles"))
            ends += (ends.empty() ? "" : " -- ") + endOf(*role);
        return result + (ends.empty() ? "" : " (" + ends + ")");
    }

    [[nodiscard]] std::string endOf(const Object& role) const
    {
        if (const Object* const element = index.element(role).element)
            return reader::shownName(*element);
        const std::string supplier = role.text("supplier");
        const std::size_t colons = supplier.rfind("::");
        return supplier.empty() ? "?" : supplier.substr(colons == std::string::npos ? 0 : colons + 2);
    }

    static std::string stereotypeOf(const Object& object)
    {
        const std::string stereotype = object.text("stereotype");
        return stereotype.empty() ? "" : " <<" + stereotype + ">>";
    }

    [[nodiscard]] std::string unitOf(const Object& object) const
    {
        const reader::MissingUnit* const unit = document.missingUnit(object);
        return unit ? " [not loaded: " + unit->fileName + "]" : std::string();
    }

    const reader::Document& document;
    reader::Index index;
    std::size_t depth;
};

int endOfReading(const reader::Document& document)
{
    std::cout.flush();
    reportFaults(document);
    return endOfOutput(done, invalidModel);
}

int printTree(const TreeRequest& request, const std::string& file)
{
    const text::ReadRecord read;
    const reader::Document document(file, readOptions(request.reading));
    refuseClashes({{"-", "the outline"}}, read);
    Outline(document, request.depth).print();
    return endOfReading(document);
}

int treeOf(const TreeRequest& request, const std::string& file)
{
    return reportFailures(file, "standard output", [&] {
        try {
            return request.isFull ? writeFullTree(file, request.reading) : printTree(request, file);
        } catch (const std::bad_alloc&) {
            throw reader::NotPetal(notEnoughMemory);
        }
    });
}

} // namespace

int writeFullTree(const std::string& file, const ReadRequest& reading)
{
    reader::ReadOptions options = readOptions(reading);
    options.readsUnits = false;
    const text::ReadRecord read;
    const reader::Document document(file, options);
    refuseClashes({{"-", "the outline"}}, read);
    compare::writeFullText(compare::Snapshot(document, compare::Depth::meaning),
                           [](std::string_view piece) { std::cout << piece; });
    return endOfReading(document);
}

int runTree(const TreeRequest& request)
{
    int exitCode = done;
    for (const std::string& file : request.files) {
        if (request.files.size() > 1)
            std::cout << (&file == &request.files.front() ? "" : "\n") << text::onOneLine(text::fileName(file))
                      << ":\n";
        exitCode = std::max(exitCode, treeOf(request, file));
    }
    return exitCode;
}
