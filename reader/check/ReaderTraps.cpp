#include "reader/check/ReaderTraps.h"

#include "reader/index/Index.h"
#include "reader/notation/Scanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string>
#include <utility>

namespace reader {

namespace {

enum Trap : std::size_t {
    loneParenthesis,
    loneParenthesisOfCondition,
    keyInsideLine,
    blockWithoutEnd,
    quoteInText,
    unknownEscape,
    bigNumber,
    keyTwice,
    withoutQuid,
    notTwoRoles,
    withoutModels,
    trapCount,
};

struct TrapRow {
    Severity severity;
    std::string_view kind;
    std::string_view text;
};

// In the order of the traps.
constexpr std::array<TrapRow, trapCount> trapRows = {{
    {Severity::warning, "lone-parenthesis",
     "a closing parenthesis stands on a line of its own; Umbrello reads no further"},
    {Severity::note, "lone-parenthesis",
     "the closing parenthesis of a condition stands on a line of its own; Umbrello reads no further"},
    {Severity::warning, "key-inside-line",
     "a key is not the first word of its line; Umbrello and EMF read line by line and lose it"},
    {Severity::warning, "block-without-end",
     "the line behind a text block is neither empty nor a closing parenthesis; Umbrello loses it"},
    {Severity::warning, "quote-in-text",
     "a double quote is part of a text in quotes; Umbrello, openMDX, StarUML and EMF end the text there or keep the "
     "backslash"},
    {Severity::note, "unknown-escape", "a backslash stands before something else than a backslash or a double quote"},
    {Severity::warning, "big-number", "a whole number does not fit into 32 bits; StarUML does not take it"},
    {Severity::warning, "key-twice", "an object has a key twice; most readers take the first"},
    {Severity::warning, "without-quid", "an element has no quid; BoUML leaves it out"},
    {Severity::warning, "not-two-roles", "an association has not two roles; Umbrello crashes"},
    {Severity::warning, "without-models",
     "a package has no list of its elements; Umbrello leaves out the diagrams of its view"},
}};

class Traps {
public:
    explicit Traps(const Document& document) : document(document) {}

    std::vector<Finding> find()
    {
        places.resize(document.files().size());
        for (const File& file : document.files()) {
            current = &placesOf(file);
            scan(document.text(file));
            if (file.header)
                look(*file.header);
        }
        forEachObject(document.root(), [&](const Object& object) {
            current = &placesOf(document.fileOf(object.position()));
            look(object);
        });
        for (const auto& ofFile : places)
            report(ofFile);
        return std::move(findings);
    }

private:
    struct Places {
        const char* first = nullptr;
        std::size_t count = 0;
    };

    using PlacesOfFile = std::array<Places, trapCount>;

    PlacesOfFile& placesOf(const File& file)
    {
        return places[static_cast<std::size_t>(&file - document.files().data())];
    }

    void note(Trap trap, const char* position)
    {
        Places& at = (*current)[trap];
        if (at.count++ == 0 || std::less<>()(position, at.first))
            at.first = position;
    }

    void report(const PlacesOfFile& ofFile)
    {
        for (std::size_t trap = 0; trap < trapCount; ++trap) {
            if (ofFile[trap].count == 0)
                continue;
            std::string text(trapRows[trap].text);
            if (ofFile[trap].count > 1)
                text += " (in " + std::to_string(ofFile[trap].count) + " places)";
            findings.push_back(
                {trapRows[trap].severity, trapRows[trap].kind, document.place(ofFile[trap].first), std::move(text)});
        }
    }

    void scan(std::string_view text)
    {
        Scanner scanner(text);
        std::vector<bool> isCondition; // of the parentheses that are open
        Token before;
        for (Token token = scanner.next(); token.kind != TokenKind::end; token = scanner.next()) {
            if (token.kind == TokenKind::open) {
                isCondition.push_back(false);
            } else if (token.kind == TokenKind::close && !isCondition.empty()) {
                if (token.isFirstOnLine && before.kind != TokenKind::block)
                    note(isCondition.back() ? loneParenthesisOfCondition : loneParenthesis, token.position);
                isCondition.pop_back();
            } else if (token.kind == TokenKind::word && before.text == "object" && !isCondition.empty()) {
                isCondition.back() = token.text == "Semantic_Info";
            }
            scanText(token);
            if (before.kind == TokenKind::block && isOnNextLine(before, token) && token.kind != TokenKind::close)
                note(blockWithoutEnd, before.position);
            before = token;
        }
    }

    // Rose closes a text block with a line that has nothing but its indentation.
    static bool isOnNextLine(const Token& block, const Token& next)
    {
        const char* const end = block.text.data() + block.text.size();
        return std::count(end, next.position, '\n') == 1;
    }

    void scanText(const Token& token)
    {
        if (token.kind == TokenKind::number || token.kind == TokenKind::reference)
            scanNumber(token);
        if (token.kind != TokenKind::text)
            return;
        for (std::size_t at = token.text.find('\\'); at < token.text.size() - 1; at = token.text.find('\\', at + 2)) {
            if (token.text[at + 1] == '"')
                note(quoteInText, token.position);
            else if (token.text[at + 1] != '\\')
                note(unknownEscape, token.position);
        }
    }

    void scanNumber(const Token& token)
    {
        std::int32_t number = 0;
        const auto [end, error] = std::from_chars(token.text.data(), token.text.data() + token.text.size(), number);
        if (error == std::errc::result_out_of_range && end == token.text.data() + token.text.size())
            note(bigNumber, token.position);
    }

    void look(const Object& object)
    {
        lookAtKeys(object);
        const ElementKind kind = elementKindOf(object);
        const bool isNamed = kind == ElementKind::package || kind == ElementKind::classifier ||
                             kind == ElementKind::relation ||
                             object.is("ClassAttribute", "Operation", "Role", "module");
        if ((isNamed || diagramKindOf(object)) && !object.has("quid"))
            note(withoutQuid, object.position());
        if (object.is("Association") && object.objects("roles").size() != 2)
            note(notTwoRoles, object.position());
        const std::string_view models = object.is("Class_Category") ? "logical_models" : "physical_models";
        if (kind == ElementKind::package && !object.has("file_name") && !object.has(models))
            note(withoutModels, object.position());
    }

    void lookAtKeys(const Object& object)
    {
        const auto attributes = object.attributes();
        // The size of a component's view, the labels of a role and what an object does stand under one key in files of
        // Rose.
        const bool mayRepeatAny = object.is("ModView") || !knownKindOf(object);
        const auto mayRepeat = [&](std::string_view key) {
            return mayRepeatAny || key == "label" || key == "Focus_Of_Control";
        };
        constexpr std::size_t mostCompared = 100;
        for (std::size_t i = 0; i < attributes.size(); ++i) {
            const std::string_view key = attributes[i].key;
            if (key.empty())
                continue; // a value without a key, which is reported where it is read
            if (!isFirstOnLine(key, object) && !object.is("Petal"))
                note(keyInsideLine, key.data());
            const auto before = attributes.first(std::min(i, mostCompared));
            const auto isSame = [&](const Attribute& other) { return other.key == key; };
            if (std::any_of(before.begin(), before.end(), isSame) && !mayRepeat(key))
                note(keyTwice, key.data());
        }
    }

    static bool isFirstOnLine(std::string_view key, const Object& object)
    {
        const char* at = key.data();
        while (at != object.position() && (at[-1] == ' ' || at[-1] == '\t'))
            --at;
        return at == object.position() || at[-1] == '\n';
    }

    const Document& document;
    std::vector<PlacesOfFile> places; // by file
    PlacesOfFile* current = nullptr;
    std::vector<Finding> findings;
};

} // namespace

std::vector<Finding> findReaderTraps(const Document& document)
{
    return Traps(document).find();
}

} // namespace reader
