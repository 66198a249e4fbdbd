#include "kiv/KivModelFile.h"

#include "modelfile/read/Tables.h"
#include "text/Files.h"
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
                           target.hasFormat = true;
                           (void)builder.readChoice(value, std::array<std::string_view, 1>{"kiv-model"});
                       }},
    Field<ModelTarget>{"version",
                       [](Builder& /*builder*/, ModelTarget& target, Value& value) {
                           target.hasVersion = true;
                           if (Builder::tokenOf(value) != "1")
                               Builder::failValue(value, "the version 1");
                           (void)Builder::readInteger<int>(value);
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
        builder.faults.add({builder.start(), "\"kiv-model\"", "no \"format\"", "format"});
    if (!target.hasVersion)
        builder.faults.add({builder.start(), "the version 1", "no \"version\"", "version"});
    builder.requireEnd();
    setDiagramPackages(model);
}

// A mistake in the model is thrown on as a SyntaxError where the JSON is broken in front of it.
void readAll(simdjson::ondemand::parser& parser, simdjson::padded_string_view text, Builder& builder, KivModel& model,
             const std::string& name)
{
    try {
        simdjson::ondemand::document document;
        const auto error = parser.iterate(text).get(document);
        if (error == simdjson::CAPACITY)
            throw ModelFileError(name, {{1, 1, "", "expected a model file of at most 4 GiB, found a larger one"}}, 1);
        if (error != simdjson::SUCCESS)
            throw SyntaxError{nullptr, simdjson::error_message(error)};
        readModel(builder, model, document);
        builder.references.follow();
    } catch (ContentError& error) {
        builder.faults.add(std::move(error));
    }
}

LoadedModel parsePadded(std::string_view text, std::size_t capacity, const std::string& name, const AlsoWanted& wanted)
{
    LoadedModel result;
    result.bytes = text.size();
    if (text.starts_with(text::byteOrderMark)) {
        text.remove_prefix(text::byteOrderMark.size());
        capacity -= text::byteOrderMark.size();
    }
    result.model = std::make_unique<KivModel>();
    simdjson::ondemand::parser parser;
    if (parser.allocate(text.size(), deepestJsonLevel) == simdjson::MEMALLOC)
        throw std::bad_alloc();
    Faults faults(text);
    Builder builder(*result.model, text, parser, faults);
    builder.places = wanted.places;
    try {
        readAll(parser, simdjson::padded_string_view(text.data(), text.size(), capacity), builder, *result.model, name);
    } catch (const SyntaxError& error) {
        faults.add(error);
    }
    if (!faults.isEmpty())
        throw faults.error(
            name, [&](std::string_view id, KivElementType kind) { return builder.references.nearestId(id, kind); });
    result.objects = builder.getObjectCount();
    if (wanted.ids)
        for (const IdTable::Named& each : builder.references.all())
            wanted.ids->emplace(each.object, each.id);
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

LoadedModel parse(const std::string& text, const std::string& name, const AlsoWanted& wanted)
{
    static_assert(text::roomBehind >= simdjson::SIMDJSON_PADDING);
    if (text.capacity() - text.size() >= simdjson::SIMDJSON_PADDING)
        return parsePadded(text, text.capacity(), name, wanted);
    std::string copy;
    copy.reserve(text.size() + text::roomBehind);
    copy = text;
    return parsePadded(copy, copy.capacity(), name, wanted);
}

} // namespace modelfile

LoadedModel parseModel(const std::string& text, const std::string& name)
{
    return modelfile::parse(text, name, {});
}

LoadedModel parseModel(const std::string& text, const std::string& name, KivIds& ids)
{
    return modelfile::parse(text, name, {nullptr, &ids});
}

LoadedModel loadModel(const std::string& path)
{
    return parseModel(text::readFile(path), text::fileName(path));
}
