#pragma once

#include "reader/notation/Petal.h"
#include "reader/notation/Scanner.h"

#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

namespace reader {

/// Something that does not fit into the notation.
struct SyntaxError {
    const char* position;
    std::string text;
};

/// What the text of one file holds.
struct ParsedFile {
    const Object* header = nullptr;   ///< the `Petal` object
    const Object* root = nullptr;     ///< the object behind it
    std::vector<const Object*> stubs; ///< objects that name the file of a controlled unit
    std::vector<SyntaxError> errors;
    std::size_t objectCount = 0;
};

/// Builds the tree of one file, without recursion: what is nested is on a stack of its own. Goes on behind an error.
class Parser {
public:
    /// Nodes go into `arena`; both must live as long as the tree.
    Parser(std::string_view text, std::pmr::memory_resource& arena);

    [[nodiscard]] ParsedFile parse();

private:
    enum class LevelKind : std::uint8_t {
        object,
        list,
        tuple,
        typed,
    };
    // A parenthesis that is open. Its values lie on the stacks below until it closes.
    struct Level {
        LevelKind kind;
        const char* start;
        Object* object;        // this object, or the one around this list
        std::string_view word; // kind of the list, type of the value; key that waits for its value
        std::size_t firstValue;
        std::size_t firstAttribute;
    };

    void advance() { token = scanner.next(); }
    void fail(const char* position, std::string text);
    void failExpecting(std::string_view what);
    void step();
    void stepOutside();
    void stepInObject();
    void stepInValues();
    void takeKey();
    void takeValue();
    void open();
    void openObject(const char* start);
    void openLevel(LevelKind kind, const char* start, Object* object);
    [[nodiscard]] bool takePoint(const char* start);
    void close();
    [[nodiscard]] std::uint32_t lengthUpToHere(const char* start) const;
    void closeObject(Level& level);
    [[nodiscard]] Value closeList(const Level& level);
    [[nodiscard]] Value closeTyped(const Level& level);
    void deliver(const Value& value);
    void placeOutermost(const Object& object);
    void closeAtEnd();
    [[nodiscard]] Value valueOfToken() const;
    template <typename T>
    T* keep(std::vector<T>& stack, std::size_t first);

    Scanner scanner;
    std::pmr::polymorphic_allocator<std::byte> allocator;
    const char* textEnd;
    Token token;
    std::vector<Level> levels;
    std::vector<Value> values;
    std::vector<Attribute> attributes;
    ParsedFile result;
    bool hasGivenUp = false;
};

} // namespace reader
