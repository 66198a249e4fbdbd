#pragma once

#include "Json.h"

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Changes a model file's tree so that it stays a valid model: objects are copied, moved and removed, keys added and
/// dropped, references led elsewhere, numbers and texts replaced by awkward ones.
class ModelMutator {
public:
    explicit ModelMutator(unsigned seed) : random(seed) {}

    void mutate(Json& model);
    /// Takes some of the objects of `other` over.
    void cross(Json& model, Json other);
    /// Takes about half of the objects out.
    void shrinkModel(Json& model);

private:
    struct Object;
    struct List;
    struct Value;
    struct Parts;
    struct Ids;

    void changeOnce(Json& model);
    void repeatObject(Json& model);
    void removeItem(Json& model);
    void moveObject(Json& model);
    void reorderList(Json& model);
    void addObject(Json& model);
    void addReference(Json& model);
    void addKey(Json& model);
    void dropKey(Json& model);
    void changeValue(Json& model);
    void drawEverything(Json& model);
    void chooseOptions(Json& model);

    Json newObject(std::string_view kind, int depth);
    Json newValue(std::string_view objectKind, std::string_view key, int depth);
    Json newReference(std::string_view kind);
    std::string newText(std::string_view key);
    std::string newPointText();
    std::int64_t newInteger(std::string_view key);
    void repair(Json& model);
    void repairReference(Json& reference, std::string_view kind, Ids& ids);

    std::size_t below(std::size_t count) { return count == 0 ? 0 : random() % count; }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    template <class Choices>
    const auto& oneOf(const Choices& choices)
    {
        return choices[below(std::size(choices))];
    }

    std::mt19937 random;
    std::vector<std::string> knownTexts;
};
