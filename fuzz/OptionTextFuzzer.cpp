#include "kiv/KivIbmRationalRose98ExportDllInterface.h"
#include "kiv/KivLocale.h"
#include "kiv/KivModelFile.h"
#include "MemoryFile.h"
#include "PetalScanner.h"
#include "Target.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <optional>
#include <vector>

// Up to nine records, each ended by U+001E: the values of the options, the output file's first, and the name of the
// locale that the file's name is converted for.
namespace {

constexpr char recordEnd = '\x1E';
// Below a device there is no file, so none is ever made.
constexpr std::string_view impossibleFolder = "/dev/null/";

// Everything that an option bears on: a type of each kind, keys and their attributes, constraints, geometry.
constexpr std::string_view modelText = R"json({
  "format": "kiv-model", "version": 1,
  "types": [
    {"id": "n", "name": "Amount", "dataType": "NUMERIC", "length": 10, "scale": 2},
    {"id": "e", "name": "Color", "typeValues": [{"name": "RED", "value": "0"}]}
  ],
  "childPackages": [{
    "name": "Orders",
    "modelElements": [
      {"kind": "class", "id": "o", "name": "Order",
       "attributes": [{"id": "oid", "name": "id", "type": "n"}, {"name": "color", "type": "e"}],
       "keys": [{"id": "pk", "attributes": ["oid"]}],
       "projections": [{"diagram": "d", "x": 300, "y": -500, "width": 200, "height": 2147483647}]},
      {"kind": "class", "id": "i", "name": "Item",
       "attributes": [{"id": "ioid", "name": "order", "type": "n", "keyMappings": [{"key": "fk", "counterpart": "oid"}]}],
       "keys": [{"kind": "foreignKey", "id": "fk", "attributes": ["ioid"]}],
       "projections": [{"diagram": "d", "x": -2147483648, "y": 7, "width": 30, "height": 30}]},
      {"kind": "association", "id": "a", "name": "has", "constraint": "ordered",
       "projections": [{"diagram": "d", "x": 5, "y": 5, "vertices": "(0,0)\r\n(0,70)\r\n(2147483647,70)"}],
       "roles": [
         {"participant": "o", "key": "fk", "constraint": "first",
          "projections": [{"diagram": "d", "vertices": "(0,0)\r\n(9,0)"}]},
         {"participant": "i", "multiplicity": {"lower": 0, "upper": -1},
          "projections": [{"diagram": "d", "vertices": "(0,0)\r\n(9,9)"}]}]}
    ],
    "diagrams": [{"id": "d", "name": "Main", "elements": ["o", "i", "a"]}]
  }]
})json";

struct SilentLog : KivLog {
    void add(const KivLogEntry& entry) override { (void)entry; }
};

using Values = std::array<KivString, 8>;

std::vector<std::string_view> recordsOf(std::string_view input)
{
    std::vector<std::string_view> records;
    while (!input.empty()) {
        const std::size_t end = std::min(input.find(recordEnd), input.size());
        records.push_back(input.substr(0, end));
        input.remove_prefix(std::min(end + 1, input.size()));
    }
    return records;
}

// What happens to a run with these values: the failure, or nothing.
std::optional<KivException> runWith(const Values& values)
{
    LoadedModel loaded = parseModel(std::string(modelText), "fixed");
    KivOptionList options;
    KivIbmRationalRose98ExportDllInterface plugin;
    plugin.getOptionList(options);
    require(options.getOptions().size() == values.size(), "eight options");
    for (std::size_t i = 0; i < values.size(); ++i) {
        const KivString name = options.getOptions()[i].name;
        options.setValue(name, values[i]);
    }
    SilentLog log;
    try {
        require(plugin.run("fuzzed", *loaded.model, options, log) == 1, "1 as the result");
    } catch (const KivException& error) {
        return error;
    }
    return std::nullopt;
}

std::string exported(const Values& values)
{
    const MemoryFile file;
    Values all = values;
    all[0] = KivString(std::string_view(file.path()));
    require(!runWith(all), "no failure, whatever an option's value");
    return file.content();
}

// The same values in the only spelling that counts. A type system that is none stands for itself.
Values normalised(const Values& values)
{
    Values result = values;
    for (std::size_t i = 2; i < 6; ++i)
        result[i] = values[i] == "True" ? "True" : "False";
    for (std::size_t i = 6; i < 8; ++i)
        result[i] = KivString(std::string_view(std::to_string(std::strtol(values[i].text(), nullptr, 10))));
    constexpr std::array typeSystems = {"As is", "C++", "Java", "Oracle 7.x/8"};
    if (std::none_of(typeSystems.begin(), typeSystems.end(), [&](const char* name) { return values[1] == name; }))
        result[1] = "none of them";
    return result;
}

void checkFileName(const Values& values)
{
    const std::optional<KivException> failure = runWith(values);
    require(failure.has_value(), "a failure below a device");
    const bool isOpening = &failure->getIdentifier() == &ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE;
    require(isOpening || &failure->getIdentifier() == &BRIDGE_UNCONVERTIBLE_TEXT, "a failure that names the file");
    require(failure->getArgument() == (isOpening ? utf8ToLocale(values[0]) : values[0]), "the file's name");
    require(std::string_view(failure->what()).find_first_of("\r\n") == std::string_view::npos, "a message of one line");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string_view> records = recordsOf(asText(data, size));
    Values values;
    for (std::size_t i = 0; i < values.size() && i < records.size(); ++i)
        values[i] = KivString(records[i]);

    const std::string file = exported(values);
    require(findPetalFault(file).empty(), findPetalFault(file));
    require(file == exported(normalised(values)), "the same file for values of the same meaning");

    values[0] = KivString(impossibleFolder).add(values[0].view());
    std::setlocale(LC_CTYPE, records.size() > values.size() ? std::string(records.back()).c_str() : "C");
    checkFileName(values);
    std::setlocale(LC_CTYPE, "C");
    return 0;
}
