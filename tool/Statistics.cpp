#include "Statistics.h"

#include <array>
#include <cstdio>
#include <sys/resource.h>

namespace {

constexpr double megabyte = 1e6;

template <class... Arguments>
std::string formatted(const char* format, Arguments... arguments)
{
    std::array<char, 400> buffer;
    std::snprintf(buffer.data(), buffer.size(), format, arguments...);
    return buffer.data();
}

std::string textOf(const char* name, const StageCost& cost)
{
    const double seconds = cost.seconds > 0 ? cost.seconds : 1e-9;
    return formatted("%-7s %9.3f s %10.1f MB/s %12.0f objects/s\n", name, cost.seconds,
                     static_cast<double>(cost.bytes) / megabyte / seconds, static_cast<double>(cost.objects) / seconds);
}

std::string jsonOf(const char* name, const StageCost& cost)
{
    return formatted("\"%s\":{\"seconds\":%.6f,\"bytes\":%zu,\"objects\":%zu}", name, cost.seconds, cost.bytes,
                     cost.objects);
}

} // namespace

std::string Statistics::asText() const
{
    return textOf("load", load) + textOf("number", number) + textOf("write", write) +
           formatted("memory  %9.1f MB at most\n", static_cast<double>(peakMemory) / megabyte);
}

std::string Statistics::asJson() const
{
    return formatted("{%s,%s,%s,\"peak_memory_bytes\":%zu}\n", jsonOf("load", load).c_str(),
                     jsonOf("number", number).c_str(), jsonOf("write", write).c_str(), peakMemory);
}

std::size_t peakMemoryOfProcess()
{
    struct rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}
