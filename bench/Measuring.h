#pragma once

#include "kiv/KivIbmRationalRose98ExportDllInterface.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <malloc.h>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <vector>

/// What both benchmarks need.

/// Takes messages and forgets them.
class SilentLog : public KivLog {
public:
    void add(const KivLogEntry& /*entry*/) override {}
};

/// Exports `model` to the file that `options` name.
inline void runPlugin(KivModel& model, KivOptionList& options)
{
    SilentLog log;
    KivIbmRationalRose98ExportDllInterface().run(KivString(), model, options, log);
}

/// The options of the bridge with their defaults, and the output path.
inline KivOptionList optionsFor(std::string_view path)
{
    KivOptionList options;
    KivIbmRationalRose98ExportDllInterface().getOptionList(options);
    options.setValue(BP_FILE.getName(), KivString(path));
    return options;
}

/// A file in the folder that is measured; not there at the beginning, and removed at the end.
class OutputPath {
public:
    OutputPath() { remove(); }
    ~OutputPath() { remove(); }
    OutputPath(const OutputPath&) = delete;
    OutputPath& operator=(const OutputPath&) = delete;

    [[nodiscard]] const char* get() const { return path.c_str(); }

    static inline std::filesystem::path folder = PETAL_BENCHMARK_FOLDER;

private:
    void remove()
    {
        std::error_code none;
        std::filesystem::remove(path, none);
    }

    std::string path = folder / ("benchmark-" + std::to_string(getpid()) + ".mdl");
};

/// Takes `--folder=FOLDER` from the command line of a benchmark.
[[nodiscard]] inline bool takeFolder(std::string_view argument)
{
    constexpr std::string_view option = "--folder=";
    if (!argument.starts_with(option))
        return false;
    OutputPath::folder = argument.substr(option.size());
    return true;
}

/// Fills the caches of the processor with something else and gives free memory back to the system, so that nothing
/// has a head start because it is small or was measured just before.
inline void forgetEverything()
{
    static std::vector<char> other(std::size_t{64} * 1024 * 1024);
    static char value = 0;
    malloc_trim(0);
    std::fill(other.begin(), other.end(), ++value);
}

struct Cost {
    double seconds = 0;
    double processorSeconds = 0; ///< the part in which the processor was at it, and not at other programs
};

/// What `work` costs, begun with nothing of it at hand.
template <class Work>
Cost costOf(Work work)
{
    const auto processorNow = [] {
        timespec time = {};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    };
    forgetEverything();
    const auto start = std::chrono::steady_clock::now();
    const double processorStart = processorNow();
    work();
    return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
            processorNow() - processorStart};
}

inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
