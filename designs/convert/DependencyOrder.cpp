#include "designs/convert/DependencyOrder.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <queue>

namespace design {

namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

// Numbers the sets of things that need each other, so that what a set needs has the lower number. The search goes down
// a stack of its own: the needs of many packages in a chain are deeper than that of the process.
class Circles {
public:
    explicit Circles(const Needs& theNeeds)
        : needs(theNeeds), numbers(theNeeds.size(), none), visits(theNeeds.size(), none), lowest(theNeeds.size(), none)
    {
        for (std::size_t start = 0; start < needs.size(); ++start)
            if (visits[start] == none)
                searchFrom(start);
    }

    [[nodiscard]] std::size_t of(std::size_t index) const { return numbers[index]; }

private:
    struct Step {
        std::size_t index = 0;
        std::size_t nextNeed = 0;
    };

    void enter(std::size_t index)
    {
        visits[index] = lowest[index] = visitCount++;
        open.push_back(index);
        steps.push_back({index});
    }

    void searchFrom(std::size_t start)
    {
        enter(start);
        while (!steps.empty()) {
            Step& step = steps.back();
            const std::size_t index = step.index;
            if (step.nextNeed < needs[index].size()) {
                const std::size_t needed = needs[index][step.nextNeed++];
                if (visits[needed] == none)
                    enter(needed);
                else if (numbers[needed] == none)
                    lowest[index] = std::min(lowest[index], visits[needed]);
                continue;
            }
            steps.pop_back();
            if (!steps.empty())
                lowest[steps.back().index] = std::min(lowest[steps.back().index], lowest[index]);
            if (lowest[index] == visits[index])
                close(index);
        }
    }

    void close(std::size_t first)
    {
        for (std::size_t index = none; index != first; open.pop_back()) {
            index = open.back();
            numbers[index] = count;
        }
        ++count;
    }

    const Needs& needs;
    std::vector<std::size_t> numbers;
    std::vector<std::size_t> visits; // by when they were come to
    std::vector<std::size_t> lowest; // visit that leads back from here
    std::vector<std::size_t> open;
    std::vector<Step> steps;
    std::size_t visitCount = 0;
    std::size_t count = 0;
};

class Taking {
public:
    explicit Taking(const Needs& needs) : missing(needs.size()), isTaken(needs.size()), neededBy(needs.size())
    {
        for (std::size_t index = 0; index < needs.size(); ++index) {
            missing[index] = needs[index].size();
            for (const std::size_t needed : needs[index])
                neededBy[needed].push_back(index);
            if (missing[index] == 0)
                ready.push(index);
        }
    }

    void takeAllReady()
    {
        while (!ready.empty()) {
            const std::size_t index = ready.top();
            ready.pop();
            take(index);
        }
    }

    void take(std::size_t index)
    {
        if (isTaken[index])
            return;
        isTaken[index] = true;
        order.push_back(index);
        for (const std::size_t waiting : neededBy[index])
            if (--missing[waiting] == 0)
                ready.push(waiting);
    }

    std::vector<std::size_t> order;

private:
    std::vector<std::size_t> missing; // how many needs are not met
    std::vector<bool> isTaken;
    Needs neededBy;
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> ready;
};

} // namespace

std::vector<std::size_t> neededFirst(const Needs& needs)
{
    Taking taking(needs);
    taking.takeAllReady();
    if (taking.order.size() == needs.size())
        return taking.order;
    const Circles circles(needs);
    std::vector<std::size_t> byCircle(needs.size());
    std::iota(byCircle.begin(), byCircle.end(), std::size_t{0});
    std::stable_sort(byCircle.begin(), byCircle.end(),
                     [&](std::size_t a, std::size_t b) { return circles.of(a) < circles.of(b); });
    for (const std::size_t index : byCircle) {
        taking.take(index);
        taking.takeAllReady();
    }
    return taking.order;
}

} // namespace design
