#include "designs/formats/drawn/Sequence.h"

#include "text/Words.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>
#include <utility>

namespace design {

namespace {

using rose::Figure;

double middleOf(const Box& box)
{
    return box.bounds ? box.bounds->left + box.bounds->width / 2 : 0;
}

bool isLeftOf(const Figure* a, const Figure* b)
{
    return middleOf(a->box) < middleOf(b->box);
}

class SequenceReader {
public:
    explicit SequenceReader(const rose::DrawnDiagram& theDiagram) : diagram(theDiagram)
    {
        for (const Figure& figure : diagram.figures)
            if (figure.kind == rose::FigureKind::Object)
                sequence.participants.push_back(&figure);
        std::stable_sort(sequence.participants.begin(), sequence.participants.end(), isLeftOf);
        for (const Figure* const figure : sequence.participants)
            byKey.emplace(figure->key, figure);
    }

    Sequence read()
    {
        if (sequence.participants.empty())
            return std::move(sequence);
        for (const rose::Joint& joint : diagram.joints)
            addMessage(joint);
        for (const rose::Bar& bar : diagram.bars)
            addBar(bar);
        for (const Figure* const figure : sequence.participants)
            if (figure->destroyedAt)
                add({StepKind::Destroy, nullptr, nullptr, {figure}, *figure->destroyedAt});
        for (const rose::DrawnNote& note : diagram.notes)
            addNote(note);
        std::stable_sort(sequence.steps.begin(), sequence.steps.end(), [](const Step& a, const Step& b) {
            return a.height != b.height ? a.height < b.height : a.kind < b.kind;
        });
        return std::move(sequence);
    }

private:
    void add(Step step)
    {
        step.height = std::isfinite(step.height) ? step.height : 0;
        sequence.steps.push_back(std::move(step));
    }

    void addMessage(const rose::Joint& joint)
    {
        if (joint.kind != rose::JointKind::Message || !byKey.contains(joint.from) || !byKey.contains(joint.to))
            return;
        add({StepKind::Message, &joint, nullptr, {byKey.at(joint.from), byKey.at(joint.to)}, joint.height});
        if (!joint.startsBar.empty())
            startOfBar.emplace(joint.startsBar, joint.height);
    }

    // A bar that a message leads to begins with it.
    void addBar(const rose::Bar& bar)
    {
        const auto figure = byKey.find(bar.figure);
        if (figure == byKey.end())
            return;
        const auto start = startOfBar.find(bar.key);
        const double from = start == startOfBar.end() ? bar.from : start->second;
        add({StepKind::Activate, nullptr, nullptr, {figure->second}, from});
        add({StepKind::Deactivate, nullptr, nullptr, {figure->second}, std::max(bar.to, from + 1)});
    }

    // Over what it hangs at, else over what is nearest.
    void addNote(const rose::DrawnNote& note)
    {
        Step step{StepKind::Note, nullptr, &note, {}, note.box.bounds ? note.box.bounds->top : 0};
        for (const std::string& key : note.figures)
            if (const auto found = byKey.find(key); found != byKey.end() && step.figures.size() < 2)
                step.figures.push_back(found->second);
        if (step.figures.size() == 2 && step.figures[0] == step.figures[1])
            step.figures.pop_back();
        if (step.figures.empty())
            step.figures.push_back(nearest(middleOf(note.box)));
        add(std::move(step));
    }

    [[nodiscard]] const Figure* nearest(double x) const
    {
        const auto right =
            std::lower_bound(sequence.participants.begin(), sequence.participants.end(), x,
                             [](const Figure* figure, double place) { return middleOf(figure->box) < place; });
        if (right == sequence.participants.begin())
            return *right;
        const Figure* const left = *(right - 1);
        if (right == sequence.participants.end() || x - middleOf(left->box) <= middleOf((*right)->box) - x)
            return left;
        return *right;
    }

    const rose::DrawnDiagram& diagram;
    Sequence sequence;
    std::unordered_map<std::string_view, const Figure*> byKey;
    std::unordered_map<std::string_view, double> startOfBar;
};

} // namespace

Sequence sequenceIn(const rose::DrawnDiagram& diagram)
{
    return SequenceReader(diagram).read();
}

std::string iconOf(const rose::Figure& figure)
{
    constexpr std::array<std::string_view, 4> icons = {"actor", "boundary", "control", "entity"};
    std::string icon = text::lowerCase(figure.stereotype);
    return std::find(icons.begin(), icons.end(), icon) == icons.end() ? "" : icon;
}

} // namespace design
