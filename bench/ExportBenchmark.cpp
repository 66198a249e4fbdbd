// What an export costs beside the least that it can cost: writing the same bytes. What loading a model file costs
// beside parsing its JSON.
//
//     export_benchmark [--quick] [--folder=FOLDER] [options of Google Benchmark]
//
// Files are written to FOLDER; each is removed before the next is made, which is not measured.

#include "Designs.h"
#include "kiv/KivModelFile.h"
#include "Measuring.h"

#include "model/Numbering.h"

#include <benchmark/benchmark.h>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <simdjson.h>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string contentOf(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    std::string content(std::filesystem::file_size(path), '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
}

// Memory that this process holds, by the system's name for the figure.
std::size_t memoryFigure(std::string_view name)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    std::size_t kilobytes = 0;
    while (status >> word)
        if (word == name && status >> kilobytes)
            return kilobytes * 1024;
    throw std::runtime_error("/proc/self/status lacks " + std::string(name));
}

// The most that this process holds during `work` above what it holds before.
template <class Work>
std::size_t memoryOf(Work work)
{
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5; // the peak begins anew
    const std::size_t before = memoryFigure("VmRSS:");
    work();
    return memoryFigure("VmHWM:") - before;
}

// An ordinary design in all its forms.
class Design {
public:
    explicit Design(std::size_t size)
        : path(OutputPath::folder / ("export-benchmark-" + std::to_string(size) + ".model.json"))
    {
        std::ofstream(path, std::ios::binary) << ordinaryDesign(size);
        loaded = loadModel(path);
        const OutputPath output;
        KivOptionList options = optionsFor(output.get());
        memoryOfRun = memoryOf([&] { runPlugin(*loaded.model, options); });
        exported = contentOf(output.get());
    }
    ~Design()
    {
        std::error_code none;
        std::filesystem::remove(path, none);
    }
    Design(const Design&) = delete;
    Design& operator=(const Design&) = delete;

    const std::string path; // the model file
    LoadedModel loaded;
    std::string exported; // what the plug-in writes for it
    std::size_t memoryOfRun;
};

Design& designOf(const benchmark::State& state)
{
    static std::map<std::int64_t, Design> designs;
    return designs.try_emplace(state.range(0), static_cast<std::size_t>(state.range(0))).first->second;
}

void measure(benchmark::State& state, const Design& design, const std::function<Cost()>& cost)
{
    double processorSeconds = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const Cost iterationCost = cost();
        state.SetIterationTime(iterationCost.seconds);
        processorSeconds += iterationCost.processorSeconds;
    }
    state.counters["processor"] = benchmark::Counter(processorSeconds, benchmark::Counter::kAvgIterations);
    state.counters["objects"] = static_cast<double>(design.loaded.objects);
}

// --- export ---

void run(benchmark::State& state)
{
    Design& design = designOf(state);
    measure(state, design, [&] {
        const OutputPath output;
        KivOptionList options = optionsFor(output.get());
        return costOf([&] { runPlugin(*design.loaded.model, options); });
    });
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(design.exported.size()));
    state.counters["memory"] = static_cast<double>(design.memoryOfRun);
}

void numberPass(benchmark::State& state)
{
    Design& design = designOf(state);
    measure(state, design, [&] {
        KivSetPID numbering(10);
        return costOf([&] { design.loaded.model->depthTraversal(numbering, nullptr); });
    });
}

void cleanUp(benchmark::State& state)
{
    Design& design = designOf(state);
    measure(state, design, [&] {
        KivZeroPID reset;
        return costOf([&] { design.loaded.model->depthTraversal(reset, nullptr); });
    });
}

// --- the same bytes, written in other ways ---

void requireSuccess(bool success, const char* what)
{
    if (!success)
        throw std::system_error(errno, std::generic_category(), what);
}

void writePieces(const char* path, std::string_view bytes)
{
    constexpr std::size_t pieceSize = std::size_t{256} * 1024;
    const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    requireSuccess(file >= 0, path);
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), std::min(pieceSize, bytes.size()));
        requireSuccess(count > 0, path);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    requireSuccess(close(file) == 0, path);
}

// Gives the bytes piece by piece, as writers without a thought for speed would have them: line ends, tabs, and what
// stands before, between and behind double quotes.
template <class Write>
void forEachPiece(std::string_view bytes, Write write)
{
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find(lineEnd), bytes.size());
        std::string_view line = bytes.substr(0, end);
        for (; line.starts_with('\t'); line.remove_prefix(1))
            write(std::string_view("\t"));
        while (!line.empty()) {
            const std::size_t quote = std::min(line.find('"'), line.size());
            if (quote > 0)
                write(line.substr(0, quote));
            if (quote < line.size())
                write(std::string_view("\""));
            line.remove_prefix(std::min(quote + 1, line.size()));
        }
        bytes.remove_prefix(end);
        if (!bytes.empty()) {
            write(lineEnd);
            bytes.remove_prefix(lineEnd.size());
        }
    }
}

void writeByStream(const char* path, std::string_view bytes)
{
    std::ofstream file(path, std::ios::binary);
    forEachPiece(bytes, [&](std::string_view piece) { file << piece; });
    file.close();
    requireSuccess(file.good(), path);
}

void writeByPrintf(const char* path, std::string_view bytes)
{
    std::FILE* const file = std::fopen(path, "wb");
    requireSuccess(file, path);
    forEachPiece(bytes, [&](std::string_view piece) {
        std::fprintf(file, "%.*s", static_cast<int>(piece.size()), piece.data());
    });
    requireSuccess(std::fclose(file) == 0, path);
}

template <void (*writeFile)(const char*, std::string_view)>
void sameBytes(benchmark::State& state)
{
    const Design& design = designOf(state);
    measure(state, design, [&] {
        const OutputPath output;
        return costOf([&] { writeFile(output.get(), design.exported); });
    });
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(design.exported.size()));
}

// --- loading ---

void load(benchmark::State& state)
{
    const Design& design = designOf(state);
    measure(state, design, [&] {
        LoadedModel loaded;
        return costOf([&] { loaded = loadModel(design.path); });
    });
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(design.loaded.bytes));
}

void parseJson(benchmark::State& state)
{
    const Design& design = designOf(state);
    measure(state, design, [&] {
        simdjson::dom::parser parser;
        return costOf([&] { benchmark::DoNotOptimize(parser.load(design.path).value()); });
    });
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(design.loaded.bytes));
}

void registerBenchmarks(bool isQuick)
{
    struct Row {
        const char* name;
        void (*function)(benchmark::State&);
    };
    constexpr Row rows[] = {
        {"run", run},
        {"raw write", sameBytes<writePieces>},
        {"number pass", numberPass},
        {"clean-up", cleanUp},
        {"std::ofstream", sameBytes<writeByStream>},
        {"fprintf", sameBytes<writeByPrintf>},
        {"load", load},
        {"JSON alone", parseJson},
    };
    struct Size {
        std::int64_t objects;
        std::int64_t iterations;
    };
    const std::vector<Size> sizes =
        isQuick ? std::vector<Size>{{1000, 1}} : std::vector<Size>{{1000, 20}, {10000, 20}, {100000, 5}, {1000000, 1}};
    for (const Size& size : sizes)
        for (const Row& row : rows)
            benchmark::RegisterBenchmark(row.name, row.function)
                ->Arg(size.objects)
                ->Iterations(size.iterations)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argumentCount, char** arguments)
{
    benchmark::Initialize(&argumentCount, arguments);
    bool isQuick = false;
    for (int i = 1; i < argumentCount; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--quick") {
            isQuick = true;
        } else if (!takeFolder(argument)) {
            std::cerr << "export_benchmark: unknown argument " << argument << '\n';
            return 2;
        }
    }
    registerBenchmarks(isQuick);
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 1;
}
