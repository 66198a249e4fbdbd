#include "ModelMutator.h"
#include "Target.h"

#include <algorithm>
#include <cstring>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t mostSize);

namespace {

constexpr std::string_view smallestModel = R"({"format":"kiv-model","version":1,"childPackages":[]})";
// Among the changed models there are a few broken ones.
constexpr unsigned plainChanges = 32;
// What can go wrong fits into this; larger models only cost time.
constexpr std::size_t mostBytes = 16384;

// Parts are taken out until the model has room; 0 when it does not get small enough.
std::size_t put(Json& model, ModelMutator& mutator, std::uint8_t* target, std::size_t mostSize)
{
    constexpr int mostAttempts = 8;
    mostSize = std::min(mostSize, mostBytes);
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const std::string text = toText(model);
        if (text.size() <= mostSize) {
            std::memcpy(target, text.data(), text.size());
            return text.size();
        }
        mutator.shrinkModel(model);
    }
    return 0;
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t mostSize,
                                               unsigned seed)
{
    if (seed % plainChanges == 0)
        return LLVMFuzzerMutate(data, size, mostSize);
    std::optional<Json> model = parseJson(asText(data, size));
    if (!model || !model->isObject())
        model = parseJson(smallestModel);
    ModelMutator mutator(seed);
    mutator.mutate(*model);
    const std::size_t newSize = put(*model, mutator, data, mostSize);
    return newSize > 0 ? newSize : LLVMFuzzerMutate(data, size, mostSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize,
                                                 std::uint8_t* target, std::size_t mostSize, unsigned seed)
{
    std::optional<Json> model = parseJson(asText(first, firstSize));
    std::optional<Json> other = parseJson(asText(second, secondSize));
    if (!model || !model->isObject() || !other || !other->isObject())
        return 0;
    ModelMutator mutator(seed);
    mutator.cross(*model, std::move(*other));
    return put(*model, mutator, target, mostSize);
}
