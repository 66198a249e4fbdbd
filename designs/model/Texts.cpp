#include "designs/model/Texts.h"

#include "text/Words.h"

#include <charconv>

namespace design {

namespace {

// A bound of a multiplicity: digits, or one of the signs for "as many as you like".
std::optional<std::int32_t> parseBound(std::string_view text)
{
    if (text == "*" || text == "n" || text == "N" || text == "m" || text == "-1")
        return -1;
    std::int32_t bound = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bound);
    if (error != std::errc() || end != text.data() + text.size() || bound < 0)
        return std::nullopt;
    return bound;
}

int hexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

} // namespace

std::optional<Multiplicity> parseMultiplicity(std::string_view text)
{
    text = text::trimmed(text);
    if (text.starts_with('[') && text.ends_with(']'))
        text = text::trimmed(text.substr(1, text.size() - 2));
    if (text.empty())
        return std::nullopt;
    const std::size_t dots = text.find("..");
    const auto lower = parseBound(text::trimmed(text.substr(0, dots)));
    const auto upper = dots == std::string_view::npos ? lower : parseBound(text::trimmed(text.substr(dots + 2)));
    if (!lower || !upper)
        return Multiplicity{0, -1, std::string(text)};
    return Multiplicity{*lower < 0 ? 0 : *lower, *upper, {}};
}

std::string textOf(const Multiplicity& multiplicity)
{
    if (!multiplicity.text.empty())
        return multiplicity.text;
    std::string upper = multiplicity.upper < 0 ? "*" : std::to_string(multiplicity.upper);
    if (multiplicity.lower == multiplicity.upper)
        return upper;
    return std::to_string(multiplicity.lower) + ".." + upper;
}

std::optional<std::uint32_t> parseColour(std::string_view text)
{
    if ((text.size() != 7 && text.size() != 4) || text.front() != '#')
        return std::nullopt;
    std::uint32_t colour = 0;
    for (const char digit : text.substr(1)) {
        const int value = hexDigit(digit);
        if (value < 0)
            return std::nullopt;
        colour = colour << 4U | static_cast<std::uint32_t>(value);
        if (text.size() == 4)
            colour = colour << 4U | static_cast<std::uint32_t>(value);
    }
    return colour;
}

std::string_view nameOf(RelationshipKind kind)
{
    switch (kind) {
    case RelationshipKind::Generalization:
        return "generalization";
    case RelationshipKind::Realization:
        return "realization";
    case RelationshipKind::Dependency:
        break;
    }
    return "dependency";
}

void addWord(std::string& list, std::string_view word)
{
    const std::string around = ", " + list + ", ";
    if (word.empty() || around.find(", " + std::string(word) + ", ") != std::string::npos)
        return;
    if (!list.empty())
        list += ", ";
    list += word;
}

void addLine(std::string& text, std::string_view line)
{
    if (!text.empty() && !line.empty())
        text += '\n';
    text += line;
}

std::string_view stereotypeFor(ClassifierKind kind)
{
    switch (kind) {
    case ClassifierKind::DataType:
        return "dataType";
    case ClassifierKind::PrimitiveType:
        return "primitive";
    case ClassifierKind::Enumeration:
        return "enumeration";
    case ClassifierKind::Class:
    case ClassifierKind::Interface:
    case ClassifierKind::AssociationClass:
    case ClassifierKind::Actor:
    case ClassifierKind::UseCase:
        break;
    }
    return "";
}

ClassifierKind kindFor(std::string_view stereotype)
{
    const std::string word = text::lowerCase(stereotype);
    if (word == "interface")
        return ClassifierKind::Interface;
    if (word == "datatype")
        return ClassifierKind::DataType;
    if (word == "primitive")
        return ClassifierKind::PrimitiveType;
    if (word == "actor")
        return ClassifierKind::Actor;
    return word == "enumeration" || word == "enum" ? ClassifierKind::Enumeration : ClassifierKind::Class;
}

} // namespace design
