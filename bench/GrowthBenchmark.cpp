// Ten times the size has to cost ten times the time. Measures every trap at growing sizes, prints a table in Markdown
// and fails when a step costs more than the limit.
//
//     growth_benchmark [--quick] [--folder=FOLDER] [NAME]
//
// NAME is a part of the names of the traps to measure. Files are written to FOLDER.

#include "Designs.h"
#include "kiv/KivModelFile.h"
#include "Measuring.h"

#include <array>
#include <cstdio>
#include <iostream>

namespace {

struct Plan {
    std::vector<std::size_t> sizes;
    double limit; // of what a step of ten times the size may cost
    std::size_t leastRuns;
    std::size_t mostRuns;
    double enoughSeconds; // for one size, between these
};

const Plan fullPlan = {{10000, 100000, 1000000}, 11, 5, 15, 1};
// Times this short say little about ten; a cost that grows with the square is still a hundred.
const Plan quickPlan = {{1000, 10000}, 40, 3, 3, 0};

// Medians of processor time, so that other programs disturb little.
struct StageSeconds {
    double load;
    double run;
};

StageSeconds measure(const Trap& trap, std::size_t size, const Plan& plan)
{
    const std::string text = trap.design(size);
    std::vector<double> loads;
    std::vector<double> runs;
    double spent = 0;
    while (runs.size() < plan.leastRuns || (runs.size() < plan.mostRuns && spent < plan.enoughSeconds)) {
        const OutputPath output;
        KivOptionList options = optionsFor(output.get());
        for (const auto& [option, value] : trap.options)
            options.setValue(option->getName(), KivString(value));
        LoadedModel loaded;
        const Cost load = costOf([&] { loaded = parseModel(text, "trap"); });
        const Cost run = costOf([&] { runPlugin(*loaded.model, options); });
        loads.push_back(load.processorSeconds);
        runs.push_back(run.processorSeconds);
        spent += load.seconds + run.seconds;
    }
    return {median(loads), median(runs)};
}

// The costs of one stage at growing sizes.
class Growth {
public:
    explicit Growth(double theLimit) : limit(theLimit) {}

    void add(double seconds)
    {
        std::array<char, 60> text;
        if (last > 0) {
            const double step = seconds / last;
            const bool isOver = step > limit;
            isTooMuch = isTooMuch || isOver;
            std::snprintf(text.data(), text.size(), isOver ? "**%.1f**" : "%.1f", step);
            addTo(steps, text.data());
        }
        std::snprintf(text.data(), text.size(), "%.*f", seconds < 0.1 ? 2 : 0, 1e3 * seconds);
        addTo(milliseconds, text.data());
        last = seconds;
    }
    [[nodiscard]] bool isOverLimit() const { return isTooMuch; }
    [[nodiscard]] std::string columns() const { return milliseconds + " | " + steps; }

private:
    static void addTo(std::string& list, const char* text)
    {
        if (!list.empty())
            list += ", ";
        list += text;
    }

    double limit;
    double last = 0;
    bool isTooMuch = false;
    std::string milliseconds;
    std::string steps;
};

// Prints the row of a trap; false when it is over the limit.
bool printRow(const Trap& trap, const Plan& plan)
{
    Growth run(plan.limit);
    Growth load(plan.limit);
    std::cout << "| " << trap.name << " | ";
    for (const std::size_t size : plan.sizes) {
        const StageSeconds seconds = measure(trap, size / trap.divisor, plan);
        run.add(seconds.run);
        load.add(seconds.load);
        std::cout << (size == plan.sizes.front() ? "" : ", ") << size / trap.divisor;
    }
    std::cout << " | " << run.columns() << " | " << load.columns() << " |" << std::endl;
    return !run.isOverLimit() && !load.isOverLimit();
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const Plan* plan = &fullPlan;
    std::string_view wanted;
    for (int i = 1; i < argumentCount; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--quick")
            plan = &quickPlan;
        else if (!takeFolder(argument))
            wanted = argument;
    }
    std::vector<std::string_view> tooMuch;
    bool isAnyMeasured = false;
    std::cout << "| Number of | Sizes | `run`, ms | steps | loading, ms | steps |\n|---|---|---|---|---|---|\n";
    for (const Trap& trap : traps()) {
        if (trap.name.find(wanted) == std::string_view::npos)
            continue;
        isAnyMeasured = true;
        if (!printRow(trap, *plan))
            tooMuch.push_back(trap.name);
    }
    for (const std::string_view name : tooMuch)
        std::cerr << "growth_benchmark: more than " << plan->limit << " times the time for ten times the " << name
                  << '\n';
    return isAnyMeasured && tooMuch.empty() ? 0 : 1;
}
