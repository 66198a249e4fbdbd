#include "designs/model/Walk.h"
#include "designs/settling/Settling.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace design {

namespace {

class RemarkSettler {
public:
    RemarkSettler(Package& theRoot, Report& theReport) : root(theRoot), report(theReport)
    {
        forEachElement(theRoot, [&](Element& element) { elements.emplace(element.id, &element); });
        elements.erase("");
        forEachPackage(theRoot, [&](Package& package) {
            for (Diagram& diagram : package.diagrams)
                for (const Box& box : diagram.boxes)
                    if (!elements.contains(box.elementId))
                        addDiagram(box.elementId, diagram);
        });
    }

    void run(Package& package)
    {
        std::erase_if(package.remarks,
                      [&](const Remark& remark) { return give(remark) || leave(remark) || show(remark); });
        for (Diagram& diagram : package.diagrams) {
            for (const Remark& remark : diagram.remarks)
                if (!give(remark) && !leave(remark))
                    diagram.notes.push_back(remark.text);
            diagram.remarks.clear();
        }
    }

private:
    // Once, even if it shows the thing twice.
    void addDiagram(std::string_view id, Diagram& diagram)
    {
        std::vector<Diagram*>& all = diagrams[id];
        if (all.empty() || all.back() != &diagram)
            all.push_back(&diagram);
    }

    // Whether it hangs at an element. Tools have one remark in several diagrams; an element has it once. The host has
    // no notes on a whole model.
    bool give(const Remark& remark)
    {
        bool isGiven = false;
        for (const std::string& id : remark.elementIds) {
            const auto found = elements.find(id);
            if (found == elements.end() || (found->second == &root && !remark.isConstraint))
                continue;
            std::vector<std::string>& texts = remark.isConstraint ? found->second->constraints : found->second->notes;
            if (std::find(texts.begin(), texts.end(), remark.text) == texts.end())
                texts.push_back(remark.text);
            isGiven = true;
        }
        return isGiven;
    }

    // Whether it stands in diagrams. Those have it as a note of their own then.
    bool show(const Remark& remark)
    {
        const auto found = remark.id.empty() ? diagrams.end() : diagrams.find(remark.id);
        if (found == diagrams.end())
            return false;
        for (Diagram* const diagram : found->second)
            diagram->notes.push_back(remark.text);
        return true;
    }

    // Whether it says nothing by itself, as a constraint does that constrains nothing.
    bool leave(const Remark& remark)
    {
        if (remark.isConstraint)
            report.left("constraint", remark.id, remark.text, "what it constrains is not taken");
        return remark.isConstraint;
    }

    const Package& root;
    Report& report;
    std::unordered_map<std::string_view, Element*> elements;
    std::unordered_map<std::string_view, std::vector<Diagram*>> diagrams; // that show what is no element, by identifier
};

} // namespace

void settleRemarks(Package& root, Report& report)
{
    RemarkSettler settler(root, report);
    forEachPackage(root, [&](Package& package) { settler.run(package); });
}

} // namespace design
