#include "reader/check/Check.h"
#include "Target.h"

#include <functional>
#include <string>

// The bytes of a petal file. No unit is read. Whatever comes is refused, or read into a tree that is whole.
namespace {

using reader::Document;
using reader::Object;
using reader::Value;

constexpr std::size_t mostTextPerByte = 3; // a byte of a charset becomes at most three of UTF-8

void checkText(const Document& document, std::string_view text)
{
    const std::string_view whole = document.text(document.files().front());
    const std::less_equal<> inOrder;
    require(text.empty() ||
                (inOrder(whole.data(), text.data()) && inOrder(text.data() + text.size(), whole.data() + whole.size())),
            "texts that are parts of the file");
}

void checkValue(const Document& document, const Value& value)
{
    checkText(document, value.raw());
    require(value.asText().size() <= value.raw().size() || value.asTyped(), "a meaning no longer than its notation");
    static_cast<void>(value.asPoint());
    static_cast<void>(value.asInt());
    require(!value || document.place(value.position()).line >= 1, "a place");
}

void checkObject(const Document& document, const reader::Index& index, const Object& object)
{
    checkText(document, object.kind());
    for (const Value& name : object.names())
        checkValue(document, name);
    for (const reader::Attribute& attribute : object.attributes()) {
        checkText(document, attribute.key);
        checkValue(document, attribute.value);
        const Object* const inside = attribute.value.asObject();
        require(!inside || inside->parent() == &object, "children that know their parent");
    }
    const Value& quid = object.get("quid");
    require(quid.kind() != reader::ValueKind::text || index.byQuid(quid.raw()), "each quid in the index");
    static_cast<void>(index.element(object));
    static_cast<void>(index.view(object, "client"));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    reader::ReadOptions options;
    options.readsUnits = false;
    try {
        const Document document(std::string(asText(data, size)), "fuzzed.mdl", options);
        require(document.files().size() == 1, "no file but the one that was given");
        require(document.text(document.files().front()).size() <= mostTextPerByte * size, "a text of bounded size");
        const reader::Index index(document);
        std::size_t count = 0;
        reader::forEachObject(document.root(), [&](const Object& object) {
            checkObject(document, index, object);
            ++count;
        });
        require(count <= document.objectCount() + 1, "each object once");
        for (const reader::Finding& finding : reader::check(document, index).findings)
            require(!finding.text.empty() && finding.place.column >= 1, "a text and a place in each finding");
    } catch (const reader::NotPetal& error) {
        require(*error.what() != '\0', "a reason for refusing a file");
    }
    return 0;
}
