#include "tool/results/Statistics.h"

#include "text/JsonWriter.h"

#include <array>
#include <cstdio>
#include <fstream>

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

void writeCost(text::JsonWriter& json, const char* name, const StageCost& cost)
{
    json.beginObject(name);
    json.member("seconds", cost.seconds).member("bytes", cost.bytes).member("objects", cost.objects);
    json.endObject();
}

} // namespace

std::string Statistics::asText() const
{
    return textOf("load", load) + textOf("number", number) + textOf("write", write) +
           formatted("memory  %9.1f MB at most\n", static_cast<double>(peakMemory) / megabyte);
}

std::string Statistics::asJson() const
{
    std::string result;
    text::JsonWriter json(result, {.isDense = true});
    json.beginObject();
    writeCost(json, "load", load);
    writeCost(json, "number", number);
    writeCost(json, "write", write);
    json.member("peak_memory_bytes", peakMemory).endObject();
    return result + '\n';
}

// What the system counts for a process that ended, and hands on to one that takes its place, begins with the memory of
// the process that started it; this begins anew with every program.
std::size_t peakMemoryOfProcess()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        std::size_t kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes)
            return kilobytes * 1024;
    }
    return 0;
}
