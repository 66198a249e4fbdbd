#include "kiv/KivModelFile.h"
#include "modelfile/read/Tables.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <map>
#include <regex>
#include <simdjson.h>

namespace {

using simdjson::dom::element;

// A file in which an object of each kind has room for one more key, where the % stands.
const std::map<std::string, std::string> places = {
    {"model", "%"},
    {"type", R"("types":[{%}])"},
    {"typeValue", R"("types":[{"typeValues":[{%}]}])"},
    {"package", R"("childPackages":[{%}])"},
    {"note", R"("modelElements":[{"kind":"note",%}])"},
    {"class", R"("modelElements":[{"kind":"class",%}])"},
    {"attribute", R"("modelElements":[{"kind":"class","attributes":[{%}]}])"},
    {"keyMapping", R"("modelElements":[{"kind":"class","attributes":[{"keyMappings":[{%}]}]}])"},
    {"operation", R"("modelElements":[{"kind":"class","operations":[{%}]}])"},
    {"argument", R"("modelElements":[{"kind":"class","parameters":[{%}]}])"},
    {"key", R"("modelElements":[{"kind":"class","keys":[{%}]}])"},
    {"association", R"("modelElements":[{"kind":"association",%}])"},
    {"role", R"("modelElements":[{"kind":"association","roles":[{%}]}])"},
    {"multiplicity", R"("modelElements":[{"kind":"association","roles":[{"multiplicity":{%}}]}])"},
    {"generalization", R"("modelElements":[{"kind":"generalization",%}])"},
    {"dependency", R"("modelElements":[{"kind":"dependency",%}])"},
    {"realization", R"("modelElements":[{"kind":"realization",%}])"},
    {"diagram", R"("diagrams":[{%}])"},
    {"projection", R"("diagrams":[{"id":"d","projections":[{"diagram":"d",%}]}])"},
};

// Keys that the files above hold already.
bool isTaken(const std::string& kind, std::string_view key)
{
    return key == "format" || key == "version" || (kind == "projection" && key == "diagram") ||
           (key == "kind" && places.at(kind).find(R"("kind":")") != std::string::npos && kind != "key");
}

// Whether the reader takes `value` for a key as far as its kind goes; that an id leads nowhere is another matter.
bool readerTakes(const std::string& kind, std::string_view key, const std::string& value)
{
    std::string text = places.at(kind);
    text.replace(text.find('%'), 1, '"' + std::string(key) + "\":" + value);
    try {
        (void)parseModel(R"({"format":"kiv-model","version":1,)" + text + "}", "m.json");
    } catch (const ModelFileError& error) {
        return std::string_view(error.what()).find("which is no id in the file") != std::string_view::npos;
    }
    return true;
}

bool isOfType(element value, std::string_view type)
{
    return type == "string"    ? value.is_string()
           : type == "integer" ? value.is_int64()
           : type == "boolean" ? value.is_bool()
           : type == "array"   ? value.is_array()
           : type == "object"  ? value.is_object()
                               : value.is_null();
}

// What the schema says of a value; only the words that it uses for the values of keys.
bool schemaTakes(element schema, element rule, element value)
{
    element words;
    if (rule["$ref"].get(words) == simdjson::SUCCESS)
        return schemaTakes(schema, schema.at_pointer(std::string_view(words).substr(1)), value);
    if (rule["const"].get(words) == simdjson::SUCCESS)
        return simdjson::to_string(words) == simdjson::to_string(value);
    if (rule["enum"].get(words) == simdjson::SUCCESS) {
        const simdjson::dom::array choices = words.get_array();
        return std::any_of(choices.begin(), choices.end(),
                           [&](element choice) { return simdjson::to_string(choice) == simdjson::to_string(value); });
    }
    if (rule["anyOf"].get(words) == simdjson::SUCCESS) {
        const simdjson::dom::array rules = words.get_array();
        return std::any_of(rules.begin(), rules.end(), [&](element each) { return schemaTakes(schema, each, value); });
    }
    if (rule["pattern"].get(words) == simdjson::SUCCESS)
        return value.is_string() && std::regex_search(std::string(value), std::regex(std::string(words)));
    if (rule["minimum"].get(words) == simdjson::SUCCESS && value.is_int64())
        return std::int64_t(value) >= std::int64_t(words) &&
               std::int64_t(value) <= std::int64_t(element(rule["maximum"]));
    words = rule["type"];
    if (words.is_string())
        return isOfType(value, words.get_string());
    const simdjson::dom::array types = words.get_array();
    return std::any_of(types.begin(), types.end(), [&](element type) { return isOfType(value, type.get_string()); });
}

class Schema : public testing::Test {
protected:
    element load() { return parser.load(PETAL_SOURCE_DIR "/docs/model-file.schema.json"); }

private:
    simdjson::dom::parser parser;
};

TEST_F(Schema, HasTheKeysThatTheReaderKnows)
{
    const element all = load()["$defs"];
    EXPECT_EQ(all.get_object().size(), modelfile::modelFileKeys().size());
    for (const modelfile::ObjectKeys& known : modelfile::modelFileKeys()) {
        std::vector<std::string_view> keys;
        for (const auto [key, rule] : all[known.objectKind]["properties"].get_object())
            keys.push_back(key);
        EXPECT_THAT(keys, testing::UnorderedElementsAreArray(known.keys)) << known.objectKind;
        EXPECT_FALSE(all[known.objectKind]["additionalProperties"].get_bool()) << known.objectKind;
    }
}

TEST_F(Schema, TakesTheValuesThatTheReaderTakes)
{
    const element schema = load();
    simdjson::dom::parser valueParser;
    for (const auto& [kind, place] : places)
        for (const auto [key, rule] : schema["$defs"][kind]["properties"].get_object())
            for (const std::string value :
                 {"null", "true", "5", "-40000", "3000000000", "1.5", "\"text\"", "\"private\"", "\"implementation\"",
                  "\"#Ff0010\"", "\"0..n\"", "\"*\"", "[]", "{}"})
                EXPECT_TRUE(isTaken(kind, key) ||
                            readerTakes(kind, key, value) == schemaTakes(schema, rule, valueParser.parse(value)))
                    << kind << ' ' << key << ' ' << value;
}

TEST_F(Schema, HasExamplesThatTheReaderTakes)
{
    std::size_t count = 0;
    for (const auto& file : std::filesystem::directory_iterator(PETAL_SOURCE_DIR "/examples")) {
        if (!file.is_regular_file())
            continue;
        EXPECT_GT(loadModel(file.path()).objects, 100U) << file.path();
        ++count;
    }
    EXPECT_GE(count, 2U);
}

} // namespace
