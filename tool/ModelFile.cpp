#include "ModelFile.h"

#include "IdTable.h"
#include "JsonText.h"
#include "NearestName.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <limits>
#include <optional>
#include <simdjson.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace {

using Array = simdjson::ondemand::array;
using Object = simdjson::ondemand::object;
using Value = simdjson::ondemand::value;

constexpr std::size_t deepestPackageLevel = 512;
constexpr std::size_t longestQuotation = 60;

// The content is wrong: `at` points at the value or key, into the text. `missing` is a key that should follow there.
struct ContentError {
    const char* at;
    std::string expected;
    std::string found;
    std::string missing;
};

// The JSON is broken at `at`; null when the parser does not know where.
struct SyntaxError {
    const char* at;
    std::string reason;
};

// The beginning of a text, in whole characters.
std::string_view shortened(std::string_view text)
{
    std::size_t cut = std::min(longestQuotation, text.size());
    while (cut > 0 && cut < text.size() && (static_cast<unsigned char>(text[cut]) & 0xC0U) == 0x80U)
        --cut;
    return text.substr(0, cut);
}

// What a token that starts like this can be.
std::string describe(std::string_view token)
{
    switch (token.empty() ? '\0' : token.front()) {
    case '{':
        return "an object";
    case '[':
        return "a list";
    case 'n':
    case 't':
    case 'f':
        return std::string(token);
    case '"':
        break;
    default:
        return "the number " + std::string(token.substr(0, longestQuotation)) +
               (token.size() > longestQuotation ? "..." : "");
    }
    return "the text " + std::string(shortened(token)) + (token.size() > longestQuotation ? "...\"" : "");
}

bool isJsonToken(std::string_view token)
{
    const char first = token.empty() ? '\0' : token.front();
    return first == '{' || first == '[' || first == '"' || token == "null" || token == "true" || token == "false" ||
           isJsonNumber(token);
}

std::string_view trimmed(std::string_view token)
{
    while (!token.empty() && std::string_view(" \n\r\t").find(token.back()) != std::string_view::npos)
        token.remove_suffix(1);
    return token;
}

class Builder;

// A key of an object as it is written, with the closing quote: a search compares words, since keys are short. The text
// may be read beyond its end as far as its padding goes.
class Key {
public:
    constexpr Key() = default; // stands everywhere; to be overwritten
    constexpr Key(std::string_view theText) : text(theText)
    {
        for (std::size_t at = 0; at < std::min(text.size() + 1, sizeof words); ++at) {
            const std::size_t shift = 8 * (std::endian::native == std::endian::little ? at % 8 : 7 - at % 8);
            const auto byte = static_cast<unsigned char>(at < text.size() ? text[at] : '"');
            words[at / 8] |= std::uint64_t{byte} << shift;
            masks[at / 8] |= std::uint64_t{0xFF} << shift;
        }
    }
    constexpr Key(const char* theText) : Key(std::string_view(theText)) {}

    [[nodiscard]] constexpr std::string_view view() const { return text; }
    // Whether it stands behind the opening quote at `at`.
    [[nodiscard]] bool isAt(const char* at) const
    {
        std::array<std::uint64_t, wordCount> found;
        std::memcpy(found.data(), at + 1, sizeof found);
        std::uint64_t difference = 0;
        for (std::size_t i = 0; i < wordCount; ++i)
            difference |= (found[i] ^ words[i]) & masks[i];
        return difference == 0 && (text.size() < sizeof words || isRestAt(at + 1));
    }

private:
    static constexpr std::size_t wordCount = 2;

    [[nodiscard]] bool isRestAt(const char* start) const
    {
        return std::memcmp(start, text.data(), text.size()) == 0 && start[text.size()] == '"';
    }

    std::string_view text;
    std::array<std::uint64_t, wordCount> words = {};
    std::array<std::uint64_t, wordCount> masks = {};
};

constexpr Key kindKey = "kind";

// A key of an object and how its value is taken over.
template <class Target>
struct Field {
    Key key;
    void (*read)(Builder&, Target&, Value&);
};

// A reference that can be followed only when the whole file is read.
struct Reference {
    std::string_view id; // without data: null
    const char* at;
    KivElementType expected;
    void (*assign)(void* owner, KivObject* target);
    void* owner;
};

// A package before it is clear what it will be: its kind can stand behind its contents.
struct PackageParts : KivPackage {
    std::vector<KivPackage*> children;
    std::string_view id;
    bool isDesignPackage = true;
};

struct PendingKeyMapping {
    KivAttribute* attribute = nullptr;
    KivKeyMapping mapping;
};

template <class Member>
struct MemberOf;
template <class Class, class Type>
struct MemberOf<Type Class::*> {
    using Owner = Class;
};

std::string_view nameOf(KivElementType code)
{
    switch (code) {
    case KivElementType::Type:
        return "a type";
    case KivElementType::Class:
        return "a class";
    case KivElementType::Key:
        return "a key";
    case KivElementType::Attribute:
        return "an attribute";
    case KivElementType::ClassDiagram:
        return "a class diagram";
    case KivElementType::ModelElement:
        return "an element of a package";
    default:
        return "a model object";
    }
}

std::string idOf(KivElementType code)
{
    const bool mayBeNull = code != KivElementType::ClassDiagram; // of a projection
    return "the id of " + std::string(nameOf(code)) + (mayBeNull ? " or null" : "");
}

class Builder {
public:
    Builder(KivModel& theModel, std::string_view theText, const simdjson::ondemand::parser& theParser)
        : model(theModel), text(theText), parser(theParser)
    {
    }

    void readModel(simdjson::ondemand::document& document);
    void resolveReferences();
    [[nodiscard]] std::size_t getObjectCount() const { return objectCount; }

    template <class Element>
    Element* create()
    {
        if constexpr (std::is_base_of_v<KivModelObject, Element>)
            ++objectCount;
        return model.create<Element>();
    }

    // --- values ---

    static std::string_view tokenOf(Value& value) { return trimmed(value.raw_json_token()); }

    [[noreturn]] static void fail(const char* at, std::string expected, std::string found, std::string missing = {})
    {
        throw ContentError{at, std::move(expected), std::move(found), std::move(missing)};
    }

    // The value is not what is expected: either it is something else, or nothing that JSON knows.
    [[noreturn]] static void failValue(Value& value, std::string expected)
    {
        const std::string_view token = tokenOf(value);
        if (!isJsonToken(token))
            throw SyntaxError{token.data(), "something that is no JSON value"};
        fail(token.data(), std::move(expected), describe(token));
    }

    static void check(simdjson::error_code error, Value& value, const char* expected)
    {
        if (error != simdjson::SUCCESS)
            failValue(value, expected);
    }

    static bool isNull(Value& value) { return tokenOf(value) == "null"; }

    // The bytes of a text; valid until the next text is read.
    std::string_view readText(Value& value, const char* expected = "a text")
    {
        const std::string_view token = tokenOf(value);
        if (token.empty() || token.front() != '"')
            failValue(value, expected);
        simdjson::ondemand::raw_json_string raw;
        check(value.get_raw_json_string().get(raw), value, expected);
        if (token.find('\\') == std::string_view::npos)
            return token.substr(1, token.size() - 2);
        const std::optional<std::string_view> text = unescape(raw, token.size());
        if (!text)
            fail(token.data(), "a text with valid escapes", describe(token));
        if (text->find('\0') != std::string_view::npos)
            fail(token.data(), "a text without U+0000", describe(token));
        return *text;
    }

    // The parser's own room for texts without escapes is meant for each text once, and some are looked at twice here.
    std::optional<std::string_view> unescape(simdjson::ondemand::raw_json_string raw, std::size_t length)
    {
        scratch.resize(length + simdjson::SIMDJSON_PADDING);
        std::uint8_t* to = scratch.data();
        std::string_view text;
        if (parser.unescape(raw, to).get(text) != simdjson::SUCCESS ||
            !simdjson::validate_utf8(text.data(), text.size()))
            return std::nullopt;
        return text;
    }

    // A text that stays until the whole file is read.
    std::string_view keep(std::string_view read)
    {
        const bool isInFile = read.data() >= text.data() && read.data() < text.data() + text.size();
        return isInFile ? read : kept.emplace_back(read);
    }

    template <class Integer>
    static Integer readInteger(Value& value)
    {
        const std::string_view token = tokenOf(value);
        Integer number = 0;
        const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), number);
        std::int64_t taken = 0;
        if (error != std::errc() || end != token.data() + token.size() || !isJsonNumber(token) ||
            value.get_int64().get(taken) != simdjson::SUCCESS)
            failValue(value, "an integer from " + std::to_string(std::numeric_limits<Integer>::min()) + " to " +
                                 std::to_string(std::numeric_limits<Integer>::max()));
        return number;
    }

    static bool readBool(Value& value)
    {
        bool result = false;
        check(value.get_bool().get(result), value, "true or false");
        return result;
    }

    template <std::size_t Count>
    static std::string alternatives(const std::array<std::string_view, Count>& choices)
    {
        std::string result;
        for (std::size_t i = 0; i < Count; ++i) {
            if (i > 0)
                result += i + 1 == Count ? " or " : ", ";
            result += jsonQuoted(choices[i]);
        }
        return result;
    }

    // The place of a text among those that may stand here.
    template <std::size_t Count>
    std::size_t readChoice(Value& value, const std::array<std::string_view, Count>& choices)
    {
        const std::string_view token = tokenOf(value);
        if (token.empty() || token.front() != '"')
            failValue(value, alternatives(choices));
        const auto found = std::find(choices.begin(), choices.end(), readText(value));
        if (found == choices.end())
            fail(token.data(), alternatives(choices), describe(token));
        return static_cast<std::size_t>(found - choices.begin());
    }

    template <class Read>
    void readList(Value& value, Read read)
    {
        Array array;
        const std::string_view token = tokenOf(value);
        check(value.get_array().get(array), value, "a list");
        std::size_t index = 0;
        for (auto item : array) {
            Value element;
            if (const auto error = item.get(element); error != simdjson::SUCCESS)
                throwSyntaxError(error, token.data());
            read(element, index++);
        }
    }

    Object readObject(Value& value)
    {
        Object object;
        check(value.get_object().get(object), value, "an object");
        return object;
    }

    [[noreturn]] void throwSyntaxError(simdjson::error_code error, const char* fallback) const
    {
        if (error == simdjson::INCOMPLETE_ARRAY_OR_OBJECT) {
            const std::size_t offset = firstMisplacedByte(text);
            throw SyntaxError{text.data() + offset,
                              offset == text.size() ? "the end of the text" : "something that has no place there"};
        }
        const char* const at = locate();
        throw SyntaxError{at ? at : fallback, simdjson::error_message(error)};
    }

    // Where the parser stands; null at the end of the text.
    [[nodiscard]] const char* locate() const
    {
        const char* at = nullptr;
        return document && document->current_location().get(at) == simdjson::SUCCESS ? at : nullptr;
    }

    // Back to before the first key.
    void rewind(Object& object) const
    {
        bool isEmpty = false;
        if (const auto error = object.reset().get(isEmpty); error != simdjson::SUCCESS)
            throwSyntaxError(error, nullptr);
    }

    // --- objects ---

    std::string_view readKey(simdjson::ondemand::field& field, const char*& at)
    {
        const char* const raw = field.key().raw();
        at = raw - 1;
        const char* end = raw;
        bool isEscaped = false;
        for (; *end != '"'; end += *end == '\\' ? 2 : 1)
            isEscaped = isEscaped || *end == '\\';
        const auto length = static_cast<std::size_t>(end - raw);
        if (!isEscaped)
            return {raw, length};
        const std::optional<std::string_view> key = unescape(field.key(), length + 2);
        if (!key)
            fail(at, "a key with valid escapes", describe({at, length + 2}));
        return *key;
    }

    // Calls `read(key, place of the key, value)` for each key in order until it returns false.
    template <class Read>
    void forEachField(Object& object, Read read)
    {
        for (auto result : object) {
            simdjson::ondemand::field field;
            if (const auto error = std::move(result).get(field); error != simdjson::SUCCESS)
                throwSyntaxError(error, nullptr);
            const char* at = nullptr;
            const std::string_view key = readKey(field, at);
            if (!read(key, at, field.value()))
                return;
        }
    }

    // Reads every key of an object. Files list the keys of like objects in one order, so the search for a key starts
    // behind the one before, and most are recognised at once.
    template <class Target, std::size_t Count>
    void readFields(Object& object, Target& target, const std::array<Field<Target>, Count>& fields)
    {
        static_assert(Count <= 64);
        std::uint64_t seen = 0;
        std::size_t next = 0;
        for (auto result : object) {
            simdjson::ondemand::field field;
            if (const auto error = std::move(result).get(field); error != simdjson::SUCCESS)
                throwSyntaxError(error, nullptr);
            const char* at = field.key().raw() - 1;
            if (!fields[next].key.isAt(at))
                next = findKey(readKey(field, at), at, fields, next);
            if ((seen >> next & 1U) != 0)
                fail(at, "each key once in an object", "the key " + jsonQuoted(fields[next].key.view()) + " again");
            seen |= std::uint64_t{1} << next;
            fields[next].read(*this, target, field.value());
            next = next + 1 == Count ? 0 : next + 1;
        }
    }

    // Place of a key in the table, looked for from `start` on.
    template <class Target, std::size_t Count>
    std::size_t findKey(std::string_view key, const char* at, const std::array<Field<Target>, Count>& fields,
                        std::size_t start)
    {
        for (std::size_t tried = 0; tried < Count; ++tried) {
            const std::size_t place = (start + tried) % Count;
            if (fields[place].key.view() == key)
                return place;
        }
        failUnknownKey(key, at, fields);
    }

    template <class Target, std::size_t Count>
    [[noreturn]] void failUnknownKey(std::string_view key, const char* at,
                                     const std::array<Field<Target>, Count>& fields)
    {
        std::vector<std::string_view> known;
        known.reserve(Count);
        for (const auto& field : fields)
            known.push_back(field.key.view());
        const std::string found = "the unknown key " + jsonQuoted(shortened(key));
        const std::optional<std::string_view> nearest = nearestName(key, known);
        std::string expected = "a known key";
        if (nearest)
            expected += " (perhaps " + jsonQuoted(*nearest) + ")";
        fail(at, expected, found);
    }

    // Looks ahead for one key and leaves the object as it was.
    template <class Read>
    bool findField(Object& object, const Key& wanted, Read read)
    {
        bool found = false;
        for (auto result : object) {
            simdjson::ondemand::field field;
            if (const auto error = std::move(result).get(field); error != simdjson::SUCCESS)
                throwSyntaxError(error, nullptr);
            const char* at = field.key().raw() - 1;
            found = wanted.isAt(at) || readKey(field, at) == wanted.view();
            if (found) {
                read(field.value());
                break;
            }
        }
        rewind(object);
        return found;
    }

    // --- references ---

    void identify(Value& value, KivObject& object) { takeId(value, &object); }

    // A package gets its address later.
    void identify(Value& value, PackageParts& parts) { parts.id = takeId(value, nullptr); }
    void tellAddress(std::string_view id, KivPackage* package) { objects.tell(id, package); }

    std::string_view takeId(Value& value, KivObject* object)
    {
        const char* const at = tokenOf(value).data();
        const std::string_view id = keep(readText(value));
        if (!objects.add(id, object))
            fail(at, "an id that is used once", "the id " + jsonQuoted(id) + " again");
        return id;
    }

    void refer(Value& value, KivElementType expected, void (*assign)(void*, KivObject*), void* owner)
    {
        const char* const at = tokenOf(value).data();
        if (isNull(value)) {
            if (value.is_null().error() != simdjson::SUCCESS)
                failValue(value, "null");
            references.push_back({{}, at, expected, assign, owner});
            return;
        }
        const std::string_view id = keep(readText(value, "an id (a text) or null"));
        references.push_back({id, at, expected, assign, owner});
    }

    // A reference of its own (not one of a list): most lead back to an object already read.
    void referAtOnce(Value& value, KivElementType expected, void (*assign)(void*, KivObject*), void* owner)
    {
        refer(value, expected, assign, owner);
        const Reference& reference = references.back();
        if (!reference.id.data()) {
            references.pop_back();
            return;
        }
        KivObject* const found = objects.find(reference.id);
        if (found && found->isInstanceOf(expected)) {
            assign(owner, found);
            references.pop_back();
        }
    }

    void atEnd(void (*finish)(void*, KivObject*), void* owner)
    {
        references.push_back({{}, nullptr, KivElementType::Object, finish, owner});
    }

    PendingKeyMapping& addKeyMapping(KivAttribute& attribute)
    {
        return keyMappings.emplace_back(PendingKeyMapping{&attribute, {}});
    }

    // --- parts of the file ---

    KivPackage* readPackage(Value& value, std::size_t level);
    std::size_t packageLevel = 0;
    std::vector<KivObject*> unfinished; // objects of the lists that are being read (see MadeObjects)

private:
    KivModel& model;
    std::string_view text;
    const simdjson::ondemand::parser& parser;
    simdjson::ondemand::document* document = nullptr;
    std::vector<std::uint8_t> scratch;
    std::deque<std::string> kept;
    IdTable objects;
    std::vector<Reference> references;
    std::deque<PendingKeyMapping> keyMappings;
    std::size_t objectCount = 1;
};

// --- the tables: which keys an object has ---

template <auto Member, class Target>
void readMember(Builder& builder, Target& target, Value& value)
{
    auto& member = target.*Member;
    using Type = std::remove_reference_t<decltype(member)>;
    if constexpr (std::is_same_v<Type, bool>)
        member = Builder::readBool(value);
    else if constexpr (std::is_same_v<Type, KivString>)
        member = KivString(builder.readText(value));
    else
        member = Builder::readInteger<Type>(value);
}

template <auto Member, class Target>
void assignMember(void* owner, KivObject* object)
{
    auto& member = static_cast<Target*>(owner)->*Member;
    member = static_cast<std::remove_reference_t<decltype(member)>>(object);
}

template <class Type>
constexpr KivElementType codeOf()
{
    if constexpr (std::is_same_v<Type, KivType>)
        return KivElementType::Type;
    else if constexpr (std::is_same_v<Type, KivClass>)
        return KivElementType::Class;
    else if constexpr (std::is_same_v<Type, KivKey>)
        return KivElementType::Key;
    else if constexpr (std::is_same_v<Type, KivAttribute>)
        return KivElementType::Attribute;
    else if constexpr (std::is_same_v<Type, KivClassDiagram>)
        return KivElementType::ClassDiagram;
    else
        return KivElementType::ModelObject;
}

template <auto Member, class Target>
void readReference(Builder& builder, Target& target, Value& value)
{
    using Type = std::remove_pointer_t<std::remove_reference_t<decltype(target.*Member)>>;
    builder.referAtOnce(value, codeOf<Type>(), assignMember<Member, Target>, &target);
}

template <auto Member, class Target, class Element>
void readReferenceList(Builder& builder, Target& target, Value& value, KivElementType expected)
{
    constexpr auto add = [](void* owner, KivObject* object) {
        (static_cast<Target*>(owner)->*Member).add(static_cast<Element*>(object));
    };
    builder.readList(value, [&](Value& item, std::size_t /*index*/) { builder.refer(item, expected, add, &target); });
}

template <auto Member>
constexpr auto member(std::string_view key)
{
    using Target = typename MemberOf<decltype(Member)>::Owner;
    return Field<Target>{key, readMember<Member, Target>};
}

template <auto Member>
constexpr auto reference(std::string_view key)
{
    using Target = typename MemberOf<decltype(Member)>::Owner;
    return Field<Target>{key, readReference<Member, Target>};
}

// The entry for `kind`, which was looked up before the object was made.
template <class Target>
constexpr Field<Target> knownKind()
{
    return {"kind", [](Builder& builder, Target& /*target*/, Value& value) { (void)builder.readText(value); }};
}

template <class First, class... Rest>
constexpr auto fieldTable(const First& first, const Rest&... rest)
{
    return std::array<First, 1 + sizeof...(Rest)>{first, rest...};
}

template <class Target, std::size_t Own>
constexpr auto withCommonFields(const std::array<Field<Target>, Own>& own);

// --- notes and projections ---

void readNotes(Builder& builder, KivVector<KivNote>& notes, Value& value)
{
    builder.readList(value, [&](Value& item, std::size_t /*index*/) {
        auto* const note = builder.create<KivNote>();
        note->description = KivString(builder.readText(item));
        notes.add(note);
    });
}

constexpr auto projectionFields =
    fieldTable(reference<&KivProjection::diagram>("diagram"), member<&KivProjection::x>("x"),
               member<&KivProjection::y>("y"), member<&KivProjection::width>("width"),
               member<&KivProjection::height>("height"), member<&KivProjection::lineColor>("lineColor"),
               member<&KivProjection::fillColor>("fillColor"), member<&KivProjection::fontColor>("fontColor"),
               member<&KivProjection::fontName>("fontName"), member<&KivProjection::fontSize>("fontSize"),
               Field<KivProjection>{"vertices", [](Builder& builder, KivProjection& projection, Value& value) {
                                        static_cast<KivRelationshipProjection&>(projection).vertices =
                                            KivString(builder.readText(value));
                                    }});

void readProjection(Builder& builder, KivVector<KivProjection>& projections, Value& value)
{
    const char* const at = Builder::tokenOf(value).data();
    Object object = builder.readObject(value);
    bool hasDiagram = false;
    builder.findField(object, "diagram", [&](Value& diagram) { hasDiagram = !Builder::isNull(diagram); });
    if (!hasDiagram)
        Builder::fail(at, "the id of a class diagram", "none", "diagram");
    const bool isLine = builder.findField(object, "vertices", [](Value&) {});
    KivProjection* const projection =
        isLine ? builder.create<KivRelationshipProjection>() : builder.create<KivProjection>();
    builder.readFields(object, *projection, projectionFields);
    projections.add(projection);
}

// --- what every model object has ---

template <class Target, std::size_t Own>
constexpr auto withCommonFields(const std::array<Field<Target>, Own>& own)
{
    constexpr std::size_t commonCount = 7;
    std::array<Field<Target>, commonCount + Own> fields = {
        Field<Target>{"id", [](Builder& builder, Target& target, Value& value) { builder.identify(value, target); }},
        Field<Target>{"name", [](Builder& builder, Target& target,
                                 Value& value) { target.setName(KivString(builder.readText(value))); }},
        Field<Target>{"description", readMember<&KivObject::description, Target>},
        Field<Target>{"stereotype", readMember<&KivModelObject::stereotype, Target>},
        Field<Target>{"modelLevel", readMember<&KivModelObject::modelLevel, Target>},
        Field<Target>{"notes",
                      [](Builder& builder, Target& target, Value& value) { readNotes(builder, target.notes, value); }},
        Field<Target>{"projections",
                      [](Builder& builder, Target& target, Value& value) {
                          builder.readList(value, [&](Value& item, std::size_t /*index*/) {
                              readProjection(builder, target.projections, item);
                          });
                      }},
    };
    std::copy(own.begin(), own.end(), fields.begin() + commonCount);
    return fields;
}

std::int16_t defaultPosition(std::size_t index)
{
    return static_cast<std::int16_t>(std::min<std::size_t>(index, std::numeric_limits<std::int16_t>::max()));
}

// The objects of a list while it is read; their collection gets them when their number is known, and no more room than
// they need.
template <class Element>
class MadeObjects {
public:
    explicit MadeObjects(Builder& builder) : stack(builder.unfinished), start(stack.size()) {}
    ~MadeObjects() { stack.resize(start); }
    MadeObjects(const MadeObjects&) = delete;
    MadeObjects& operator=(const MadeObjects&) = delete;

    void add(Element* element) { stack.push_back(element); }
    template <class Elements>
    void moveTo(Elements& elements) const
    {
        if (stack.size() == start)
            return; // an empty collection has no memory
        elements.reserveNew(stack.size() - start);
        for (std::size_t i = start; i < stack.size(); ++i)
            elements.addNew(static_cast<Element*>(stack[i]));
    }

private:
    std::vector<KivObject*>& stack;
    std::size_t start;
};

// Reads a list of objects of one class into `elements`.
template <class Element, class Elements, std::size_t Count>
void readElements(Builder& builder, Elements& elements, Value& value, const std::array<Field<Element>, Count>& fields)
{
    MadeObjects<Element> made(builder);
    builder.readList(value, [&](Value& item, std::size_t index) {
        Object object = builder.readObject(item);
        auto* const element = builder.create<Element>();
        if constexpr (requires { element->position; })
            element->position = defaultPosition(index);
        builder.readFields(object, *element, fields);
        made.add(element);
    });
    made.moveTo(elements);
}

// --- types ---

constexpr auto typeValueFields =
    withCommonFields(fieldTable(member<&KivTypeValue::value>("value"), member<&KivTypeValue::position>("position")));

constexpr auto typeFields = withCommonFields(fieldTable(
    knownKind<KivType>(), member<&KivType::dataType>("dataType"), member<&KivType::length>("length"),
    member<&KivType::scale>("scale"), Field<KivType>{"typeValues", [](Builder& builder, KivType& type, Value& value) {
                                                         readElements(builder, type.typeValues, value, typeValueFields);
                                                     }}));

void readType(Builder& builder, KivModel& model, Value& value)
{
    constexpr std::array<std::string_view, 2> kinds = {"baseType", "derivedType"};
    Object object = builder.readObject(value);
    std::size_t kind = 0;
    builder.findField(object, kindKey, [&](Value& text) { kind = builder.readChoice(text, kinds); });
    KivType* const type =
        kind == 0 ? static_cast<KivType*>(builder.create<KivBaseType>()) : builder.create<KivDerivedType>();
    builder.readFields(object, *type, typeFields);
    model.types.add(type);
}

// --- classes ---

constexpr auto argumentFields =
    withCommonFields(fieldTable(member<&KivArgument::position>("position"), reference<&KivArgument::type>("type"),
                                member<&KivArgument::initialValue>("initialValue")));

constexpr auto keyMappingFields = fieldTable(
    Field<PendingKeyMapping>{"key",
                             [](Builder& builder, PendingKeyMapping& pending, Value& value) {
                                 builder.referAtOnce(value, KivElementType::Key,
                                                     assignMember<&KivKeyMapping::key, KivKeyMapping>,
                                                     &pending.mapping);
                             }},
    Field<PendingKeyMapping>{"counterpart", [](Builder& builder, PendingKeyMapping& pending, Value& value) {
                                 builder.referAtOnce(value, KivElementType::ModelObject,
                                                     assignMember<&KivKeyMapping::counterpart, KivKeyMapping>,
                                                     &pending.mapping);
                             }});

void readKeyMappings(Builder& builder, KivAttribute& attribute, Value& value)
{
    builder.readList(value, [&](Value& item, std::size_t /*index*/) {
        Object object = builder.readObject(item);
        PendingKeyMapping& pending = builder.addKeyMapping(attribute);
        builder.readFields(object, pending, keyMappingFields);
        builder.atEnd(
            [](void* owner, KivObject* /*none*/) {
                const auto& complete = *static_cast<PendingKeyMapping*>(owner);
                complete.attribute->keyMappings.add(complete.mapping);
            },
            &pending);
    });
}

constexpr auto attributeFields = withCommonFields(
    fieldTable(member<&KivAttribute::position>("position"), reference<&KivAttribute::type>("type"),
               member<&KivAttribute::initialValue>("initialValue"), member<&KivAttribute::visibility>("visibility"),
               member<&KivAttribute::containment>("containment"), member<&KivAttribute::isStatic>("isStatic"),
               member<&KivAttribute::isDerived>("isDerived"), Field<KivAttribute>{"keyMappings", readKeyMappings}));

constexpr auto operationFields = withCommonFields(fieldTable(
    member<&KivOperation::position>("position"), member<&KivOperation::visibility>("visibility"),
    member<&KivOperation::concurrency>("concurrency"), member<&KivOperation::isAbstract>("isAbstract"),
    member<&KivOperation::isFriend>("isFriend"), member<&KivOperation::isStatic>("isStatic"),
    member<&KivOperation::isVirtual>("isVirtual"), member<&KivOperation::semantics>("semantics"),
    member<&KivOperation::preCondition>("preCondition"), member<&KivOperation::postCondition>("postCondition"),
    reference<&KivOperation::returnType>("returnType"),
    Field<KivOperation>{"arguments", [](Builder& builder, KivOperation& operation, Value& value) {
                            readElements(builder, operation.arguments, value, argumentFields);
                        }}));

constexpr auto keyFields = withCommonFields(
    fieldTable(knownKind<KivKey>(), Field<KivKey>{"attributes", [](Builder& builder, KivKey& key, Value& value) {
                                                      readReferenceList<&KivKey::attributes, KivKey, KivAttribute>(
                                                          builder, key, value, KivElementType::Attribute);
                                                  }}));

void readKey(Builder& builder, KivClass& owner, Value& value)
{
    constexpr std::array<std::string_view, 2> kinds = {"candidateKey", "foreignKey"};
    Object object = builder.readObject(value);
    std::size_t kind = 0;
    builder.findField(object, kindKey, [&](Value& text) { kind = builder.readChoice(text, kinds); });
    KivKey* const key =
        kind == 0 ? static_cast<KivKey*>(builder.create<KivCandidateKey>()) : builder.create<KivForeignKey>();
    builder.readFields(object, *key, keyFields);
    owner.keys.add(key);
}

constexpr auto classFields = withCommonFields(
    fieldTable(knownKind<KivClass>(), member<&KivClass::classType>("classType"),
               member<&KivClass::visibility>("visibility"), member<&KivClass::concurrency>("concurrency"),
               member<&KivClass::space>("space"), member<&KivClass::isAbstract>("isAbstract"),
               member<&KivClass::isPersistent>("isPersistent"), member<&KivClass::cardinality>("cardinality"),
               Field<KivClass>{"attributes",
                               [](Builder& builder, KivClass& target, Value& value) {
                                   readElements(builder, target.attributes, value, attributeFields);
                               }},
               Field<KivClass>{"operations",
                               [](Builder& builder, KivClass& target, Value& value) {
                                   readElements(builder, target.operations, value, operationFields);
                               }},
               Field<KivClass>{"parameters",
                               [](Builder& builder, KivClass& target, Value& value) {
                                   readElements(builder, target.parameters, value, argumentFields);
                               }},
               Field<KivClass>{"keys", [](Builder& builder, KivClass& target, Value& value) {
                                   builder.readList(value, [&](Value& item, std::size_t /*index*/) {
                                       readKey(builder, target, item);
                                   });
                               }}));

// --- relationships ---

constexpr auto multiplicityFields =
    fieldTable(member<&KivMultiplicity::lower>("lower"), member<&KivMultiplicity::upper>("upper"));

void readMultiplicity(Builder& builder, KivAssociationRole& role, Value& value)
{
    Object object = builder.readObject(value);
    builder.forEachField(object, [&](std::string_view, const char*, Value) {
        role.multiplicity.isPresent = true;
        return false;
    });
    builder.rewind(object);
    builder.readFields(object, role.multiplicity, multiplicityFields);
}

constexpr auto roleFields = withCommonFields(fieldTable(
    reference<&KivAssociationRole::participant>("participant"),
    Field<KivAssociationRole>{"multiplicity", readMultiplicity},
    member<&KivAssociationRole::isAggregateEnd>("isAggregateEnd"),
    member<&KivAssociationRole::isNavigable>("isNavigable"), member<&KivAssociationRole::isStatic>("isStatic"),
    member<&KivAssociationRole::isFriend>("isFriend"), member<&KivAssociationRole::visibility>("visibility"),
    member<&KivAssociationRole::containment>("containment"), member<&KivAssociationRole::constraint>("constraint"),
    reference<&KivAssociationRole::key>("key"),
    Field<KivAssociationRole>{"qualifiers", [](Builder& builder, KivAssociationRole& role, Value& value) {
                                  readElements(builder, role.qualifiers, value, attributeFields);
                              }}));

constexpr auto associationFields = withCommonFields(fieldTable(
    knownKind<KivAssociation>(), member<&KivAssociation::isAggregation>("isAggregation"),
    member<&KivAssociation::constraint>("constraint"), reference<&KivAssociation::associationClass>("associationClass"),
    Field<KivAssociation>{"roles", [](Builder& builder, KivAssociation& association, Value& value) {
                              readElements(builder, association.roles, value, roleFields);
                          }}));

constexpr auto generalizationFields = withCommonFields(fieldTable(
    knownKind<KivGeneralization>(),
    Field<KivGeneralization>{"supertypes",
                             [](Builder& builder, KivGeneralization& target, Value& value) {
                                 readReferenceList<&KivGeneralization::supertypes, KivGeneralization, KivClass>(
                                     builder, target, value, KivElementType::Class);
                             }},
    Field<KivGeneralization>{"subtypes",
                             [](Builder& builder, KivGeneralization& target, Value& value) {
                                 readReferenceList<&KivGeneralization::subtypes, KivGeneralization, KivClass>(
                                     builder, target, value, KivElementType::Class);
                             }},
    member<&KivGeneralization::visibility>("visibility"), member<&KivGeneralization::isVirtual>("isVirtual"),
    member<&KivGeneralization::isFriend>("isFriend")));

constexpr auto dependencyFields =
    withCommonFields(fieldTable(knownKind<KivDependency>(), reference<&KivDependency::client>("client"),
                                reference<&KivDependency::supplier>("supplier")));

constexpr auto realizationFields =
    withCommonFields(fieldTable(knownKind<KivRealization>(), reference<&KivRealization::client>("client"),
                                reference<&KivRealization::supplier>("supplier")));

// --- packages ---

constexpr auto noteFields = fieldTable(
    Field<KivNote>{"id", [](Builder& builder, KivNote& note, Value& value) { builder.identify(value, note); }},
    knownKind<KivNote>(), Field<KivNote>{"text", readMember<&KivObject::description, KivNote>});

constexpr std::array<std::string_view, 6> elementKinds = {"note",           "class",      "association",
                                                          "generalization", "dependency", "realization"};

template <class Element, std::size_t Count>
KivObject* readElement(Builder& builder, Object& object, const std::array<Field<Element>, Count>& fields)
{
    auto* const element = builder.create<Element>();
    builder.readFields(object, *element, fields);
    return element;
}

KivObject* readModelElement(Builder& builder, Value& value)
{
    const char* const at = Builder::tokenOf(value).data();
    Object object = builder.readObject(value);
    std::size_t kind = elementKinds.size();
    builder.findField(object, kindKey, [&](Value& text) {
        if (!Builder::isNull(text))
            kind = builder.readChoice(text, elementKinds);
    });
    switch (kind) {
    case 0:
        return readElement(builder, object, noteFields);
    case 1:
        return readElement(builder, object, classFields);
    case 2:
        return readElement(builder, object, associationFields);
    case 3:
        return readElement(builder, object, generalizationFields);
    case 4:
        return readElement(builder, object, dependencyFields);
    case 5:
        return readElement(builder, object, realizationFields);
    default:
        Builder::fail(at, "a kind of element", "none", "kind");
    }
}

// A diagram of another kind has its elements checked and draws none.
template <class Diagram>
void readDiagramElements(Builder& builder, Diagram& diagram, Value& value)
{
    constexpr auto add = [](void* owner, KivObject* object) {
        if constexpr (std::is_same_v<Diagram, KivClassDiagram>)
            static_cast<KivClassDiagram*>(owner)->elements.add(static_cast<KivModelObject*>(object));
        else
            (void)owner, (void)object;
    };
    builder.readList(value, [&](Value& item, std::size_t /*index*/) {
        builder.refer(item, KivElementType::ModelElement, add, &diagram);
    });
}

template <class Diagram>
constexpr auto diagramFields = withCommonFields(fieldTable(knownKind<Diagram>(),
                                                           Field<Diagram>{"elements", readDiagramElements<Diagram>}));

template <class Diagram>
KivDiagram* readDiagramAs(Builder& builder, Object& object)
{
    auto* const diagram = builder.create<Diagram>();
    builder.readFields(object, *diagram, diagramFields<Diagram>);
    return diagram;
}

KivDiagram* readDiagram(Builder& builder, Value& value)
{
    constexpr std::array<std::string_view, 2> kinds = {"classDiagram", "diagram"};
    Object object = builder.readObject(value);
    std::size_t kind = 0;
    builder.findField(object, kindKey, [&](Value& text) { kind = builder.readChoice(text, kinds); });
    return kind == 0 ? readDiagramAs<KivClassDiagram>(builder, object) : readDiagramAs<KivDiagram>(builder, object);
}

void readModelElements(Builder& builder, KivPackage& package, Value& value)
{
    MadeObjects<KivObject> made(builder);
    builder.readList(value, [&](Value& item, std::size_t /*index*/) { made.add(readModelElement(builder, item)); });
    made.moveTo(package.modelElements);
}

void readDiagrams(Builder& builder, KivPackage& package, Value& value)
{
    builder.readList(value,
                     [&](Value& item, std::size_t /*index*/) { package.diagrams.add(readDiagram(builder, item)); });
}

void setDiagramPackages(KivPackage& package)
{
    for (KivDiagram* const diagram : package.diagrams)
        if (diagram->elementType == KivElementType::ClassDiagram)
            static_cast<KivClassDiagram*>(diagram)->package = &package;
}

constexpr std::array<std::string_view, 2> packageKinds = {"designPackage", "package"};

constexpr auto packageFields = withCommonFields(fieldTable(
    Field<PackageParts>{"kind",
                        [](Builder& builder, PackageParts& parts, Value& value) {
                            parts.isDesignPackage = builder.readChoice(value, packageKinds) == 0;
                        }},
    Field<PackageParts>{"modelElements", [](Builder& builder, PackageParts& parts,
                                            Value& value) { readModelElements(builder, parts, value); }},
    Field<PackageParts>{"childPackages",
                        [](Builder& builder, PackageParts& parts, Value& value) {
                            builder.readList(value, [&](Value& item, std::size_t /*index*/) {
                                parts.children.push_back(builder.readPackage(item, builder.packageLevel + 1));
                            });
                        }},
    Field<PackageParts>{
        "diagrams", [](Builder& builder, PackageParts& parts, Value& value) { readDiagrams(builder, parts, value); }}));

[[noreturn]] void failTooDeep(Builder& builder, Value& value)
{
    const char* const at = Builder::tokenOf(value).data();
    Object object = builder.readObject(value);
    std::string name;
    builder.findField(object, "name", [&](Value& text) { name = builder.readText(text); });
    Builder::fail(at, "packages nested at most " + std::to_string(deepestPackageLevel) + " levels deep",
                  "one more: " + jsonQuoted(name));
}

KivPackage* Builder::readPackage(Value& value, std::size_t level)
{
    if (level > deepestPackageLevel)
        failTooDeep(*this, value);
    Object object = readObject(value);
    PackageParts parts;
    packageLevel = level;
    readFields(object, parts, packageFields);
    packageLevel = level - 1;

    KivPackage* const package =
        parts.isDesignPackage ? static_cast<KivPackage*>(create<KivDesignPackage>()) : create<KivPackage>();
    package->setName(parts.getName());
    package->description = parts.description;
    package->stereotype = parts.stereotype;
    package->modelLevel = parts.modelLevel;
    package->notes = std::move(parts.notes);
    package->projections = std::move(parts.projections);
    package->modelElements = std::move(parts.modelElements);
    package->diagrams = std::move(parts.diagrams);
    setDiagramPackages(*package);
    for (KivPackage* const child : parts.children)
        package->addChildPackage(child);
    if (parts.id.data())
        tellAddress(parts.id, package);
    return package;
}

// --- the model ---

struct ModelTarget {
    KivModel* model;
    bool hasFormat = false;
    bool hasVersion = false;
};

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
                           const std::string_view token = Builder::tokenOf(value);
                           if (token != "1")
                               Builder::failValue(value, "the version 1");
                           target.hasVersion = Builder::readInteger<int>(value) == 1;
                       }},
    Field<ModelTarget>{"name", [](Builder& builder, ModelTarget& target,
                                  Value& value) { target.model->setName(KivString(builder.readText(value))); }},
    Field<ModelTarget>{"description",
                       [](Builder& builder, ModelTarget& target, Value& value) {
                           target.model->description = KivString(builder.readText(value));
                       }},
    Field<ModelTarget>{"stereotype",
                       [](Builder& builder, ModelTarget& target, Value& value) {
                           target.model->stereotype = KivString(builder.readText(value));
                       }},
    Field<ModelTarget>{"types",
                       [](Builder& builder, ModelTarget& target, Value& value) {
                           builder.readList(value, [&](Value& item, std::size_t /*index*/) {
                               readType(builder, *target.model, item);
                           });
                       }},
    Field<ModelTarget>{"childPackages",
                       [](Builder& builder, ModelTarget& target, Value& value) {
                           builder.readList(value, [&](Value& item, std::size_t /*index*/) {
                               target.model->addChildPackage(builder.readPackage(item, 1));
                           });
                       }},
    Field<ModelTarget>{"modelElements", [](Builder& builder, ModelTarget& target,
                                           Value& value) { readModelElements(builder, *target.model, value); }},
    Field<ModelTarget>{"diagrams", [](Builder& builder, ModelTarget& target, Value& value) {
                           readDiagrams(builder, *target.model, value);
                       }});

void Builder::readModel(simdjson::ondemand::document& theDocument)
{
    document = &theDocument;
    Object object;
    const auto error = theDocument.get_object().get(object);
    if (error == simdjson::INCORRECT_TYPE) {
        std::string_view token;
        const auto noToken = theDocument.raw_json_token().get(token);
        token = trimmed(token);
        if (noToken != simdjson::SUCCESS || !isJsonToken(token))
            throwSyntaxError(error, nullptr);
        fail(text.data(), "an object with the design", describe(token));
    }
    if (error != simdjson::SUCCESS)
        throwSyntaxError(error, nullptr);
    ModelTarget target{&model};
    readFields(object, target, modelFields);
    if (!target.hasFormat)
        fail(text.data(), "\"kiv-model\"", "none", "format");
    if (!target.hasVersion)
        fail(text.data(), "the version 1", "none", "version");
    if (locate())
        throwSyntaxError(simdjson::TRAILING_CONTENT, nullptr);
    setDiagramPackages(model);
}

void Builder::resolveReferences()
{
    for (const Reference& reference : references) {
        KivObject* target = nullptr;
        if (reference.id.data()) {
            target = objects.find(reference.id);
            if (!target)
                fail(reference.at, idOf(reference.expected), jsonQuoted(reference.id) + ", which is no id in the file");
            if (!target->isInstanceOf(reference.expected))
                fail(reference.at, idOf(reference.expected), jsonQuoted(reference.id) + ", the id of something else");
        }
        reference.assign(reference.owner, target);
    }
}

// Fills the collections that mirror references, in the order in which a pass meets the objects that hold these.
class Mirror : public KivTraversalOperation {
public:
    void pre_process(KivObject* object, void*& /*context*/) override
    {
        switch (object->elementType) {
        case KivElementType::Generalization: {
            auto* const generalization = static_cast<KivGeneralization*>(object);
            for (KivClass* const subtype : generalization->subtypes)
                if (subtype && isNew(subtype->generalizations, generalization))
                    subtype->generalizations.add(generalization);
            break;
        }
        case KivElementType::Realization: {
            auto* const realization = static_cast<KivRealization*>(object);
            if (realization->client)
                realization->client->realizations.add(realization);
            break;
        }
        case KivElementType::Dependency: {
            auto* const dependency = static_cast<KivDependency*>(object);
            if (dependency->client)
                dependency->client->dependencies.add(dependency);
            break;
        }
        case KivElementType::ClassDiagram: {
            auto* const diagram = static_cast<KivClassDiagram*>(object);
            for (KivModelObject* const element : diagram->elements)
                if (element->elementType == KivElementType::Class)
                    static_cast<KivClass*>(element)->links.add(diagram);
            break;
        }
        case KivElementType::CandidateKey:
        case KivElementType::ForeignKey: {
            auto* const key = static_cast<KivKey*>(object);
            for (KivAttribute* const attribute : key->attributes)
                attribute->keys.add(key);
            break;
        }
        default:
            break;
        }
    }

private:
    // One object at a time fills the collections, so what it added is the last element.
    template <class Element>
    static bool isNew(const KivVector<Element>& elements, const Element* element)
    {
        return elements.isEmpty() || elements.at(elements.count() - 1) != element;
    }
};

LoadedModel parsePadded(const char* data, std::size_t size, std::size_t capacity, const std::string& name)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::string_view text(data, size);
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
        capacity -= byteOrderMark.size();
    }
    LoadedModel result;
    result.model = std::make_unique<KivModel>();
    result.bytes = size;
    try {
        simdjson::ondemand::parser parser;
        simdjson::ondemand::document document;
        // Each package is an object in a list; the parser's own limit would end before that of the packages.
        if (parser.allocate(text.size(), 4 * deepestPackageLevel) == simdjson::MEMALLOC)
            throw std::bad_alloc();
        const auto error =
            parser.iterate(simdjson::padded_string_view(text.data(), text.size(), capacity)).get(document);
        if (error == simdjson::CAPACITY)
            throw ModelFileError(name + ": a model file of at most 4 GiB was expected, found a larger one");
        if (error != simdjson::SUCCESS)
            throw SyntaxError{text.data() + std::min(firstStrayByte(text), text.size()),
                              simdjson::error_message(error)};
        Builder builder(*result.model, text, parser);
        builder.readModel(document);
        builder.resolveReferences();
        result.objects = builder.getObjectCount();
    } catch (const ContentError& error) {
        const auto offset = static_cast<std::size_t>(error.at - text.data());
        const std::string missing = error.missing.empty() ? "" : "/" + error.missing;
        throw ModelFileError(name + ":" + pointerAt(text, offset) + missing + ": expected " + error.expected +
                             ", found " + error.found);
    } catch (const SyntaxError& error) {
        const std::size_t offset = error.at ? static_cast<std::size_t>(error.at - text.data()) : text.size();
        const auto [line, column] = lineAndColumnAt(text, std::min(offset, text.size()));
        throw ModelFileError(name + ":" + std::to_string(line) + ":" + std::to_string(column) +
                             ": expected well-formed JSON, found " + error.reason);
    }
    Mirror mirror;
    result.model->depthTraversal(mirror, nullptr);
    return result;
}

} // namespace

namespace {

// A file descriptor that closes itself.
class File {
public:
    explicit File(int theDescriptor) : descriptor(theDescriptor) {}
    ~File()
    {
        if (descriptor > STDIN_FILENO)
            close(descriptor);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    [[nodiscard]] int get() const { return descriptor; }

private:
    int descriptor;
};

[[noreturn]] void throwSystemError(const std::string& path)
{
    throw ModelUnreadable(errno, std::generic_category(), path);
}

void grow(FileContent& content, std::size_t newCapacity)
{
    auto grown = std::make_unique_for_overwrite<char[]>(newCapacity);
    std::memcpy(grown.get(), content.data.get(), content.size);
    content.data = std::move(grown);
    content.capacity = newCapacity;
}

template <class Target, std::size_t Count>
ModelFileKeys keysOf(std::string_view objectKind, const std::array<Field<Target>, Count>& fields)
{
    ModelFileKeys result{objectKind, {}};
    for (const auto& field : fields)
        result.keys.push_back(field.key.view());
    return result;
}

} // namespace

FileContent readFile(const std::string& path)
{
    constexpr std::size_t leastCapacity = std::size_t{64} * 1024;
    const File file(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status = {};
    if (file.get() < 0 || fstat(file.get(), &status) != 0)
        throwSystemError(path);
    FileContent content;
    content.capacity = leastCapacity;
    if (S_ISREG(status.st_mode) && status.st_size > 0)
        content.capacity = static_cast<std::size_t>(status.st_size) + simdjson::SIMDJSON_PADDING + 1;
    content.data = std::make_unique_for_overwrite<char[]>(content.capacity);
    for (;;) {
        const std::size_t room = content.capacity - simdjson::SIMDJSON_PADDING - content.size;
        if (room == 0) {
            grow(content, content.capacity * 2);
            continue;
        }
        const ssize_t count = read(file.get(), content.data.get() + content.size, room);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throwSystemError(path);
        if (count == 0)
            break;
        content.size += static_cast<std::size_t>(count);
    }
    std::memset(content.data.get() + content.size, 0, simdjson::SIMDJSON_PADDING);
    return content;
}

std::string fileName(const std::string& path)
{
    return path == "-" ? "standard input" : path;
}

LoadedModel parseModel(const FileContent& content, const std::string& name)
{
    return parsePadded(content.data.get(), content.size, content.capacity, name);
}

LoadedModel loadModel(const std::string& path)
{
    return parseModel(readFile(path), fileName(path));
}

LoadedModel parseModel(std::string_view text, const std::string& name)
{
    const simdjson::padded_string padded(text);
    return parsePadded(padded.data(), padded.size(), padded.size() + simdjson::SIMDJSON_PADDING, name);
}

std::vector<ModelFileKeys> modelFileKeys()
{
    return {
        keysOf("model", modelFields),
        keysOf("type", typeFields),
        keysOf("typeValue", typeValueFields),
        keysOf("package", packageFields),
        keysOf("note", noteFields),
        keysOf("class", classFields),
        keysOf("attribute", attributeFields),
        keysOf("keyMapping", keyMappingFields),
        keysOf("operation", operationFields),
        keysOf("argument", argumentFields),
        keysOf("key", keyFields),
        keysOf("association", associationFields),
        keysOf("role", roleFields),
        keysOf("multiplicity", multiplicityFields),
        keysOf("generalization", generalizationFields),
        keysOf("dependency", dependencyFields),
        keysOf("realization", realizationFields),
        keysOf("diagram", diagramFields<KivClassDiagram>),
        keysOf("projection", projectionFields),
    };
}
