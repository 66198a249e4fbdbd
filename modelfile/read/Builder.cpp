#include "modelfile/read/Builder.h"

namespace modelfile {

bool Builder::hasFields(Object& object) const
{
    bool hasAny = false;
    for (auto result : object) {
        (void)fieldOf(std::move(result));
        hasAny = true;
        break;
    }
    rewind(object);
    return hasAny;
}

std::size_t Builder::readKind(Object& object, std::span<const std::string_view> kinds, std::size_t missing)
{
    std::size_t kind = missing;
    findField(object, "kind", [&](Value& text) {
        if (missing < kinds.size() || !isNull(text))
            kind = readChoice(text, kinds);
    });
    return kind;
}

void Builder::failRepeatedKey(std::string_view key, const char* at)
{
    fail(at, "each key once in an object", "the key " + text::jsonQuoted(key) + " again");
}

void Builder::failUnknownKey(std::string_view key, const char* at, std::span<const std::string_view> known)
{
    fail(at, "a known key", "the unknown key " + text::jsonQuoted(shownPart(key)), "", nearestOf(key, known));
}

} // namespace modelfile
