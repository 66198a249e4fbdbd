#include "designs/settling/Settling.h"

#include "designs/model/Walk.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace design {

namespace {

bool isControl(char byte)
{
    return static_cast<unsigned char>(byte) < 0x20U || byte == 0x7F;
}

class NameSettler {
public:
    explicit NameSettler(Report& theReport) : report(theReport) {}

    void requireName(Element& element, std::string_view kind)
    {
        if (!element.name.empty())
            return;
        element.name = "Unnamed " + std::to_string(++unnamed);
        report.made("name", element.id, element.name, "a " + std::string(kind) + " has none");
    }

    void flatten(Element& element)
    {
        if (std::none_of(element.name.begin(), element.name.end(), isControl))
            return;
        std::replace_if(element.name.begin(), element.name.end(), isControl, ' ');
        report.made("name", element.id, element.name, "it had line ends or other control characters");
    }

private:
    Report& report;
    std::size_t unnamed = 0;
};

} // namespace

void settleNames(Package& root, Report& report)
{
    NameSettler settler(report);
    forEachElement(root, [&](Element& element) { settler.flatten(element); });
    forEachPackage(root, [&](Package& package) {
        for (Package& child : package.packages)
            settler.requireName(child, "package");
        for (Classifier& classifier : package.classifiers)
            settler.requireName(classifier, "class");
    });
}

} // namespace design
