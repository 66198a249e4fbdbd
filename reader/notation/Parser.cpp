#include "reader/notation/Parser.h"

#include "reader/notation/Wording.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace reader {

namespace {

constexpr std::size_t deepestLevel = 5000;
constexpr std::size_t mostErrors = 100;

// Whether an object only names the file of a controlled unit. One that holds something besides its properties is whole.
bool isStub(const Object& object)
{
    const auto isContent = [](const Attribute& attribute) {
        return attribute.key != "attributes" && attribute.value.kind() == ValueKind::list;
    };
    const auto attributes = object.attributes();
    return object.parent() && object.flag("is_unit") && object.get("file_name").kind() == ValueKind::text &&
           std::none_of(attributes.begin(), attributes.end(), isContent);
}

} // namespace

Parser::Parser(std::string_view text, std::pmr::memory_resource& arena)
    : scanner(text), allocator(&arena), textEnd(text.data() + text.size())
{
    advance();
}

ParsedFile Parser::parse()
{
    while (token.kind != TokenKind::end && !hasGivenUp)
        step();
    closeAtEnd();
    return std::move(result);
}

void Parser::fail(const char* position, std::string text)
{
    result.errors.push_back({position, std::move(text)});
    if (result.errors.size() < mostErrors)
        return;
    hasGivenUp = true;
    result.errors.push_back({position, "this is not read further: too many errors"});
}

void Parser::failExpecting(std::string_view what)
{
    fail(token.position, "expected " + std::string(what) + ", found " + describe(token));
}

void Parser::step()
{
    if (token.isUnclosed)
        fail(token.position, "expected a second \" before the end of the line");
    if (levels.empty())
        stepOutside();
    else if (token.kind == TokenKind::close)
        close();
    else if (levels.back().kind == LevelKind::object)
        stepInObject();
    else
        stepInValues();
}

void Parser::stepOutside()
{
    if (token.kind == TokenKind::open && !result.root) {
        open();
        return;
    }
    failExpecting(result.root ? "the end of the file" : "(object");
    hasGivenUp = hasGivenUp || result.root != nullptr;
    advance();
}

void Parser::stepInObject()
{
    Level& level = levels.back();
    const bool isWaiting = level.word.data() != nullptr;
    if (isWaiting && (token.kind != TokenKind::word || !token.isFirstOnLine)) {
        takeValue();
        return;
    }
    if (isWaiting) {
        fail(level.word.data(),
             "expected a value behind the key '" + shortened(level.word) + "', found the end of the line");
        level.word = {};
    }
    if (token.kind == TokenKind::word) {
        takeKey();
        return;
    }
    failExpecting("a key or )");
    if (token.kind == TokenKind::comma || token.kind == TokenKind::stray)
        advance();
    else
        takeValue(); // kept without a key
}

void Parser::takeKey()
{
    Level& level = levels.back();
    level.word = token.text;
    advance();
}

void Parser::stepInValues()
{
    if (token.kind == TokenKind::comma && levels.back().kind == LevelKind::tuple)
        advance();
    else
        takeValue();
}

void Parser::takeValue()
{
    switch (token.kind) {
    case TokenKind::open:
        open();
        return;
    case TokenKind::comma:
    case TokenKind::stray:
        failExpecting("a value");
        if (levels.back().kind == LevelKind::object)
            levels.back().word = {};
        break;
    default:
        deliver(valueOfToken());
    }
    advance();
}

Value Parser::valueOfToken() const
{
    constexpr std::pair<TokenKind, ValueKind> kinds[] = {{TokenKind::text, ValueKind::text},
                                                         {TokenKind::block, ValueKind::block},
                                                         {TokenKind::number, ValueKind::number},
                                                         {TokenKind::word, ValueKind::word},
                                                         {TokenKind::reference, ValueKind::reference}};
    Value value;
    value.text = token.text.data();
    value.length = static_cast<std::uint32_t>(token.text.size());
    for (const auto& [tokenKind, valueKind] : kinds)
        if (token.kind == tokenKind)
            value.valueKind = valueKind;
    return value;
}

// The parenthesis is the current token.
void Parser::open()
{
    const char* const start = token.position;
    Object* const around = levels.empty() ? nullptr : levels.back().object;
    if (levels.size() == deepestLevel) {
        fail(start, "this is not read further: nested more than " + std::to_string(deepestLevel) + " levels deep");
        hasGivenUp = true;
        return;
    }
    advance();
    const std::string_view word = token.kind == TokenKind::word ? token.text : std::string_view();
    if (word == "object") {
        openObject(start);
    } else if (levels.empty()) {
        failExpecting("object");
        openLevel(LevelKind::tuple, start, nullptr);
    } else if (word == "list" || word == "value") {
        openLevel(word == "list" ? LevelKind::list : LevelKind::typed, start, around);
        advance();
        if (token.kind == TokenKind::word) {
            levels.back().word = token.text;
            advance();
        }
    } else if (token.kind != TokenKind::number || !takePoint(start)) {
        openLevel(LevelKind::tuple, start, around);
    }
}

void Parser::openLevel(LevelKind kind, const char* start, Object* object)
{
    levels.push_back({kind, start, object, {}, values.size(), attributes.size()});
}

// `(450, 225)` is one value, kept as its text. The current token is its first number.
bool Parser::takePoint(const char* start)
{
    Scanner ahead = scanner;
    const TokenKind expected[] = {TokenKind::comma, TokenKind::number, TokenKind::close};
    Token last;
    for (const TokenKind kind : expected)
        if ((last = ahead.next()).kind != kind)
            return false;
    Value point;
    point.text = start;
    point.length = static_cast<std::uint32_t>(last.position + 1 - start);
    point.valueKind = ValueKind::point;
    deliver(point);
    scanner = ahead;
    advance();
    return true;
}

// The word `object` is the current token.
void Parser::openObject(const char* start)
{
    advance();
    auto* const object = std::construct_at(allocator.allocate_object<Object>());
    ++result.objectCount;
    object->start = start;
    object->parentObject = levels.empty() ? nullptr : levels.back().object;
    openLevel(LevelKind::object, start, object);
    if (token.kind == TokenKind::word) {
        object->objectKind = token.text;
        advance();
    } else {
        failExpecting("the kind of the object");
    }
    const std::size_t firstName = values.size();
    for (; token.kind == TokenKind::text || token.kind == TokenKind::reference; advance()) {
        if (token.isUnclosed)
            fail(token.position, "expected a second \" before the end of the line");
        const Value value = valueOfToken();
        if (const auto number = value.asReference()) {
            object->ownNumber = *number;
            object->hasNumber = true;
        } else if (token.kind == TokenKind::text) {
            values.push_back(value);
        }
    }
    object->nameCount = static_cast<std::uint32_t>(values.size() - firstName);
    object->firstName = keep(values, firstName);
}

// Moves the top of a stack, from `first` on, to where it stays.
template <typename T>
T* Parser::keep(std::vector<T>& stack, std::size_t first)
{
    const std::size_t count = stack.size() - first;
    if (count == 0)
        return nullptr;
    T* const kept = allocator.allocate_object<T>(count);
    std::uninitialized_copy_n(stack.data() + first, count, kept);
    stack.resize(first);
    return kept;
}

void Parser::close()
{
    Level level = levels.back();
    if (level.kind == LevelKind::object) {
        closeObject(level);
    } else {
        const Value value = level.kind == LevelKind::typed ? closeTyped(level) : closeList(level);
        levels.pop_back();
        deliver(value);
    }
    advance();
}

// Of what the current token closes, or the end of what is read.
std::uint32_t Parser::lengthUpToHere(const char* start) const
{
    return static_cast<std::uint32_t>(token.position - start + (token.kind == TokenKind::close ? 1 : 0));
}

void Parser::closeObject(Level& level)
{
    if (level.word.data())
        fail(level.word.data(), "expected a value behind the key '" + shortened(level.word) + "', found )");
    Object& object = *level.object;
    object.length = lengthUpToHere(object.start);
    object.attributeCount = static_cast<std::uint32_t>(attributes.size() - level.firstAttribute);
    object.firstAttribute = keep(attributes, level.firstAttribute);
    levels.pop_back();
    if (isStub(object))
        result.stubs.push_back(&object);
    Value value;
    value.object = &object;
    value.valueKind = ValueKind::object;
    deliver(value);
}

Value Parser::closeList(const Level& level)
{
    auto* const list = std::construct_at(allocator.allocate_object<List>());
    list->listKind = level.word;
    list->start = level.start;
    list->length = lengthUpToHere(level.start);
    list->count = static_cast<std::uint32_t>(values.size() - level.firstValue);
    list->first = keep(values, level.firstValue);
    Value value;
    value.list = list;
    value.valueKind = level.kind == LevelKind::list ? ValueKind::list : ValueKind::tuple;
    return value;
}

Value Parser::closeTyped(const Level& level)
{
    auto* const typed = std::construct_at(allocator.allocate_object<TypedValue>());
    typed->type = level.word;
    typed->position = level.start;
    typed->length = lengthUpToHere(level.start);
    if (values.size() > level.firstValue)
        typed->value = values[level.firstValue];
    else
        fail(level.start, "expected a text in this value, found )");
    values.resize(level.firstValue);
    Value value;
    value.typed = typed;
    value.valueKind = ValueKind::typed;
    return value;
}

// Puts a value where it belongs: behind its key, or into its list.
void Parser::deliver(const Value& value)
{
    if (levels.empty()) {
        if (const Object* const object = value.asObject())
            placeOutermost(*object);
        return;
    }
    Level& level = levels.back();
    if (level.kind != LevelKind::object) {
        values.push_back(value);
        return;
    }
    attributes.push_back({level.word, value});
    level.word = {};
}

void Parser::placeOutermost(const Object& object)
{
    if (object.is("Petal", "petal") && !result.header)
        result.header = &object;
    else
        result.root = &object;
}

void Parser::closeAtEnd()
{
    if (!levels.empty() && !hasGivenUp) {
        const Object* const innermost = levels.back().object;
        fail(textEnd, "expected ), found the end of the file" +
                          (innermost ? "; not closed is " + describe(*innermost) : std::string()));
        hasGivenUp = true; // the rest follows from this
    } else if (!result.root && !hasGivenUp) {
        fail(textEnd, "expected the object of a model or of a unit, found the end of the file");
    }
    const std::size_t errors = result.errors.size();
    while (!levels.empty())
        close();
    result.errors.resize(errors);
}

} // namespace reader
