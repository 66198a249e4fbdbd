#include "kiv/KivModelFile.h"

#include "modelfile/read/Tables.h"
#include "text/Files.h"
#include "text/JsonFault.h"
#include "text/JsonPointer.h"
#include "text/Places.h"
#include "text/Utf8.h"

#include "kiv/KivConnecting.h"

namespace modelfile {

namespace {

struct ModelTarget {
    KivModel* model;
    bool hasFormat = false;
    bool hasVersion = false;
};

template <auto Member>
constexpr Field<ModelTarget> modelText(std::string_view key)
{
    return {key, [](Builder& builder, ModelTarget& target, Value& value) {
                target.model->*Member = KivString(builder.readText(value));
            }};
}

template <auto Read>
constexpr Field<ModelTarget> modelList(std::string_view key)
{
    return {key, [](Builder& builder, ModelTarget& target, Value& value) {
                builder.readList(value,
                                 [&](Value& item, std::size_t /*index*/) { Read(builder, *target.model, item); });
            }};
}

void readTopPackage(Builder& builder, KivModel& model, Value& value)
{
    model.addChildPackage(readPackage(builder, value, 1));
}

constexpr auto modelFields = fieldTable(
    Field<ModelTarget>{"$schema",
                       [](Builder& builder, ModelTarget& /*target*/, Value& value) { (void)builder.readText(value); }},
    Field<ModelTarget>{"format",
                       [](Builder& builder, ModelTarget& target, Value& value) {
                           (void)builder.readChoice(value, std::array<std::string_view, 1>{"kiv-model"});
                           target.hasFormat = true;
                       }},
    Field<ModelTarget>{"version",
                       [](Builder& /*builder*/, ModelTarget& target, Value& value) {
                           if (Builder::tokenOf(value) != "1")
                               Builder::failValue(value, "the version 1");
                           target.hasVersion = Builder::readInteger<int>(value) == 1;
                       }},
    Field<ModelTarget>{"name", [](Builder& builder, ModelTarget& target,
                                  Value& value) { target.model->setName(KivString(builder.readText(value))); }},
    modelText<&KivObject::description>("description"), modelText<&KivModelObject::stereotype>("stereotype"),
    modelList<readType>("types"), modelList<readTopPackage>("childPackages"),
    Field<ModelTarget>{"modelElements", [](Builder& builder, ModelTarget& target,
                                           Value& value) { readModelElements(builder, *target.model, value); }},
    Field<ModelTarget>{"diagrams", [](Builder& builder, ModelTarget& target, Value& value) {
                           readDiagrams(builder, *target.model, value);
                       }});

void readModel(Builder& builder, KivModel& model, simdjson::ondemand::document& document)
{
    Object object = builder.readDocument(document);
    ModelTarget target{&model};
    builder.readFields(object, target, modelFields);
    if (!target.hasFormat)
        Builder::fail(builder.start(), "\"kiv-model\"", "none", "format");
    if (!target.hasVersion)
        Builder::fail(builder.start(), "the version 1", "none", "version");
    builder.requireEnd();
    setDiagramPackages(model);
}

[[noreturn]] void throwContentError(const std::string& name, std::string_view text, const ContentError& error)
{
    const auto offset = static_cast<std::size_t>(error.at - text.data());
    const std::string missing = error.missing.empty() ? "" : "/" + error.missing;
    throw ModelFileError(name + ":" + text::jsonPointerAt(text, offset) + missing + ": expected " + error.expected +
                         ", found " + error.found);
}

// The parser says that there is a fault; what it is, and where, is looked for here.
[[noreturn]] void throwSyntaxError(const std::string& name, std::string_view text, const SyntaxError& error)
{
    std::size_t offset = error.at ? static_cast<std::size_t>(error.at - text.data()) : text.size();
    std::string message = "expected well-formed JSON, found " + error.reason;
    if (const auto fault = text::findJsonFault(text, deepestJsonLevel)) {
        offset = fault->offset;
        message = fault->message(text);
    }
    throw ModelFileError(name + ":" + text::lineAndColumnAt(text, std::min(offset, text.size())).asText() + ": " +
                         message);
}

LoadedModel parsePadded(std::string_view text, std::size_t capacity, const std::string& name)
{
    LoadedModel result;
    result.bytes = text.size();
    if (text.starts_with(text::byteOrderMark)) {
        text.remove_prefix(text::byteOrderMark.size());
        capacity -= text::byteOrderMark.size();
    }
    result.model = std::make_unique<KivModel>();
    try {
        simdjson::ondemand::parser parser;
        simdjson::ondemand::document document;
        if (parser.allocate(text.size(), deepestJsonLevel) == simdjson::MEMALLOC)
            throw std::bad_alloc();
        const auto error =
            parser.iterate(simdjson::padded_string_view(text.data(), text.size(), capacity)).get(document);
        if (error == simdjson::CAPACITY)
            throw ModelFileError(name + ": a model file of at most 4 GiB was expected, found a larger one");
        if (error != simdjson::SUCCESS)
            throw SyntaxError{nullptr, simdjson::error_message(error)};
        Builder builder(*result.model, text, parser);
        readModel(builder, *result.model, document);
        builder.references.follow();
        result.objects = builder.getObjectCount();
    } catch (const ContentError& error) {
        throwContentError(name, text, error);
    } catch (const SyntaxError& error) {
        throwSyntaxError(name, text, error);
    }
    connect(*result.model);
    return result;
}

} // namespace

std::vector<ObjectKeys> modelFileKeys()
{
    std::vector<ObjectKeys> result = {keysOf("model", modelFields)};
    for (auto* const keys : {typeKeys, packageKeys, classKeys, relationshipKeys, diagramKeys, projectionKeys})
        for (ObjectKeys& row : keys())
            result.push_back(std::move(row));
    return result;
}

} // namespace modelfile

LoadedModel parseModel(const std::string& text, const std::string& name)
{
    static_assert(text::roomBehind >= simdjson::SIMDJSON_PADDING);
    if (text.capacity() - text.size() >= simdjson::SIMDJSON_PADDING)
        return modelfile::parsePadded(text, text.capacity(), name);
    std::string copy;
    copy.reserve(text.size() + text::roomBehind);
    copy = text;
    return modelfile::parsePadded(copy, copy.capacity(), name);
}

LoadedModel loadModel(const std::string& path)
{
    return parseModel(text::readFile(path), text::fileName(path));
}
