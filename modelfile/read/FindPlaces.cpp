#include "modelfile/read/Tables.h"
#include "text/JsonPointer.h"
#include "text/Places.h"
#include "text/Utf8.h"

#include <algorithm>
#include <unordered_map>

namespace modelfile {

namespace {

// What a model holds, in an order that is the same for every model made of one text.
class Listing : public KivTraversalOperation {
public:
    void pre_process(KivObject* object, void*& /*context*/) override
    {
        objects.push_back(object);
        if (object->isInstanceOf(KivElementType::ModelObject))
            for (KivProjection* const projection : static_cast<KivModelObject*>(object)->projections)
                objects.push_back(projection);
    }

    std::vector<const KivObject*> objects;
};

std::vector<const KivObject*> listObjects(KivModel& model)
{
    Listing listing;
    model.depthTraversal(listing, nullptr);
    return std::move(listing.objects);
}

using OffsetOf = std::unordered_map<const KivObject*, std::size_t>;

// Makes the model again, beside the one that is there, and so learns where the wanted objects of that begin.
OffsetOf findOffsets(const std::string& text, KivModel& model, const std::vector<ModelFilePart>& parts)
{
    OffsetOf wanted;
    for (const ModelFilePart& part : parts)
        wanted.emplace(part.object, 0);
    ObjectPlaces places;
    const LoadedModel again = parse(text, "", {&places});
    const std::vector<const KivObject*> objects = listObjects(model);
    const std::vector<const KivObject*> twins = listObjects(*again.model);
    std::unordered_map<const KivObject*, const KivObject*> objectOfTwin;
    for (std::size_t i = 0; i < std::min(objects.size(), twins.size()); ++i)
        if (wanted.contains(objects[i]))
            objectOfTwin.emplace(twins[i], objects[i]);
    for (const auto& [twin, offset] : places.made)
        if (const auto found = objectOfTwin.find(twin); found != objectOfTwin.end())
            wanted[found->second] = offset;
    return wanted;
}

} // namespace

} // namespace modelfile

std::vector<ModelFilePlace> findPlaces(const std::string& text, KivModel& model,
                                       const std::vector<ModelFilePart>& parts)
{
    std::string_view json = text;
    if (json.starts_with(text::byteOrderMark))
        json.remove_prefix(text::byteOrderMark.size());
    const modelfile::OffsetOf offsetOf = modelfile::findOffsets(text, model, parts);
    const std::size_t start = std::min(json.find_first_not_of(" \t\r\n"), json.size());
    std::vector<std::pair<std::size_t, std::size_t>> order; // offsets, and which parts they are of
    for (const ModelFilePart& part : parts) {
        const std::size_t object = std::max(offsetOf.at(part.object), start);
        const auto member = part.key.empty() ? std::nullopt : text::findJsonMember(json, object, part.key);
        order.emplace_back(member ? member->value : object, order.size());
    }
    std::sort(order.begin(), order.end());
    std::vector<ModelFilePlace> places(parts.size());
    text::JsonWalk walk(json);
    const text::PlaceIndex index(json);
    for (const auto& [offset, part] : order) {
        walk.goTo(offset);
        const auto [line, column] = index.at(offset);
        places[part] = {line, column, walk.pointer()};
    }
    return places;
}
