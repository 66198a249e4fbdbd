#include "designs/model/Counts.h"

#include "designs/model/Texts.h"
#include "designs/model/Walk.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace design {

namespace {

constexpr std::array<std::string_view, 20> kinds = {
    "package",
    "class",
    "interface",
    "data type",
    "primitive type",
    "enumeration",
    "association class",
    "actor",
    "use case",
    "attribute",
    "operation",
    "parameter",
    "literal",
    "association",
    "generalization",
    "realization",
    "dependency",
    "diagram",
    "box",
    "line",
};

class Counter {
public:
    Counter()
    {
        std::transform(kinds.begin(), kinds.end(), counts.begin(), [](auto kind) { return ElementCount{kind}; });
    }

    void add(const Package& package)
    {
        add("package", package.packages.size());
        for (const Classifier& classifier : package.classifiers)
            add(classifier);
        add("association", package.associations.size());
        for (const Association& association : package.associations)
            for (const AssociationEnd& end : association.ends)
                add("attribute", end.qualifiers.size());
        for (const Relationship& relationship : package.relationships)
            add(nameOf(relationship.kind), 1);
        add("diagram", package.diagrams.size());
        for (const Diagram& diagram : package.diagrams) {
            add("box", diagram.boxes.size());
            add("line", diagram.lines.size());
        }
    }

    [[nodiscard]] std::vector<ElementCount> take() const
    {
        std::vector<ElementCount> found;
        std::copy_if(counts.begin(), counts.end(), std::back_inserter(found),
                     [](const ElementCount& each) { return each.count > 0; });
        return found;
    }

private:
    void add(const Classifier& classifier)
    {
        add(nameOf(classifier.kind), 1);
        add("attribute", classifier.attributes.size());
        add("operation", classifier.operations.size());
        for (const Operation& operation : classifier.operations)
            add("parameter", operation.parameters.size());
        add("parameter", classifier.templateParameters.size());
        add("literal", classifier.literals.size());
    }

    void add(std::string_view kind, std::size_t count)
    {
        counts[static_cast<std::size_t>(std::find(kinds.begin(), kinds.end(), kind) - kinds.begin())].count += count;
    }

    std::array<ElementCount, kinds.size()> counts;
};

} // namespace

std::vector<ElementCount> countElements(const Design& design)
{
    Counter counter;
    forEachPackage(design.root, [&](const Package& package) { counter.add(package); });
    return counter.take();
}

std::string_view nameOf(ClassifierKind kind)
{
    switch (kind) {
    case ClassifierKind::Interface:
        return "interface";
    case ClassifierKind::DataType:
        return "data type";
    case ClassifierKind::PrimitiveType:
        return "primitive type";
    case ClassifierKind::Enumeration:
        return "enumeration";
    case ClassifierKind::AssociationClass:
        return "association class";
    case ClassifierKind::Actor:
        return "actor";
    case ClassifierKind::UseCase:
        return "use case";
    case ClassifierKind::Class:
        break;
    }
    return "class";
}

} // namespace design
