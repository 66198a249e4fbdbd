#include "designs/formats/rose/Reading.h"

#include "text/Words.h"

namespace design::rose {

namespace {

constexpr std::string_view keyword = "enum ";

// The end of a literal: the next comma that is not in a quoted value.
std::size_t endOfLiteral(std::string_view text)
{
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool beginsValue = i > 0 && text[i - 1] == '=';
        if (quote == 0 && beginsValue && (text[i] == '\'' || text[i] == '"') &&
            text.find(text[i], i + 1) != std::string_view::npos)
            quote = text[i];
        else if (quote != 0 && text[i] == quote)
            quote = 0;
        else if (quote == 0 && text[i] == ',')
            return i;
    }
    return text.size();
}

} // namespace

std::string enumerationOf(const Object& theClass)
{
    if (theClass.has("class_attributes") || theClass.has("operations"))
        return "";
    for (const Object* const property : theClass.objects("attributes")) {
        const std::string tool = property->text("tool");
        if (property->text("name") != "ImplementationType" || (tool != "cg" && tool != "IDL"))
            continue;
        std::string value = property->text("value");
        if (value.starts_with(keyword) && value.ends_with('}') && value.find('{') != std::string::npos)
            return value;
    }
    return "";
}

std::vector<Literal> literalsOf(std::string_view declaration)
{
    const std::size_t opening = declaration.find('{');
    std::string_view rest = declaration.substr(opening + 1, declaration.size() - opening - 2);
    std::vector<Literal> literals;
    while (!text::trimmed(rest).empty()) {
        const std::size_t end = endOfLiteral(rest);
        const std::string_view part = text::trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        const std::size_t equals = part.find('=');
        Literal& literal = literals.emplace_back();
        literal.name = part.substr(0, equals);
        if (equals != std::string_view::npos)
            literal.value = part.substr(equals + 1);
        literal.hasEmptyValue = literal.value.empty() && equals != std::string_view::npos;
    }
    return literals;
}

} // namespace design::rose
