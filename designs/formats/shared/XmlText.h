#pragma once

#include "text/Sink.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace design::xml {

/// XML as it is written, a line for each element.
class Text {
public:
    Text(text::Sink& sink, std::string_view declaration, std::string_view theIndentation = "\t");

    void open(std::string_view element);
    /// Of the element that was opened last and holds nothing yet.
    void attribute(std::string_view name, std::string_view value);
    void close(std::string_view element);
    /// To be called when all is closed.
    void finish() { tail.passOn(); }

private:
    void indent();
    void endTag();

    text::Tail tail;
    std::string& text;
    const std::string_view indentation; // of a level
    std::size_t depth = 0;
    bool isInTag = false;
};

/// An element from its start to the end of the block or statement.
class Element {
public:
    Element(Text& theText, const char* theName) : text(theText), name(theName) { text.open(name); }
    ~Element() { text.close(name); }
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    Element(Element&&) = delete;
    Element& operator=(Element&&) = delete;

    Element& with(std::string_view attribute, std::string_view value)
    {
        text.attribute(attribute, value);
        return *this;
    }
    /// Only if there is something to say.
    Element& withSome(std::string_view attribute, std::string_view value)
    {
        return value.empty() ? *this : with(attribute, value);
    }
    Element& flag(std::string_view attribute, bool isTrue) { return with(attribute, isTrue ? "true" : "false"); }

private:
    Text& text;
    const char* name;
};

} // namespace design::xml
