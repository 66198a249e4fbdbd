#pragma once

#include "plugin/support/ModelBuilder.h"

#include <algorithm>
#include <type_traits>

/// A model with a class diagram in its Logical View. Numbers begin with 10: types, then the elements of the view in the
/// order in which they were added, what they hold before them, then the diagrams.
class Drawing : public ModelBuilder {
public:
    KivDesignPackage* const view = package("Logical View");
    KivClassDiagram* const main = diagram("Main", view);

    template <class Element>
    Element* draw(Element* element, KivClassDiagram* where)
    {
        where->elements.add(element);
        if constexpr (std::is_same_v<Element, KivClass>)
            element->links.add(where);
        return element;
    }
    template <class Element>
    Element* draw(Element* element)
    {
        return draw(element, main);
    }
    KivClass* drawClass(const KivString& name) { return draw(addClass(name, view)); }

    /// Uses up numbers without a trace in the file.
    void skipNumbers(int count)
    {
        for (int i = 0; i < count; ++i)
            type("unused");
    }

    [[nodiscard]] std::string written(OptionValues values = {}) { return exportedLogicalView(model, values); }
};

/// The object that begins at `begin`, up to its closing parenthesis.
inline std::string objectAt(std::string_view text, std::size_t begin)
{
    int depth = 0;
    bool isQuoted = false;
    for (std::size_t i = begin; i < text.size(); ++i) {
        if (isQuoted && text[i] == '\\')
            ++i;
        else if (text[i] == '"')
            isQuoted = !isQuoted;
        else if (text.substr(i).starts_with("\n|"))
            i = text.find('\n', i + 1) - 1;
        else if (!isQuoted && text[i] == '(')
            ++depth;
        else if (!isQuoted && text[i] == ')' && --depth == 0)
            return std::string(text.substr(begin, i + 1 - begin));
    }
    return "(not closed)";
}

/// The first object whose first line contains `head`, from its line start on.
inline std::string objectWith(std::string_view head, std::string_view text)
{
    const std::size_t found = text.find(head);
    return found == std::string_view::npos ? "(no object)" : objectAt(text, text.rfind("\r\n", found));
}

/// The view with that number.
inline std::string viewWith(long long number, std::string_view text)
{
    return objectWith(std::string(" @").append(std::to_string(number)).append("\r\n"), text);
}

/// What stands behind the keyword in every line that begins with it, separated by blanks; without the parentheses that
/// close what was opened before.
inline std::string entries(std::string_view keyword, std::string_view text)
{
    constexpr std::string_view blanks = "\t ";
    std::string result;
    for (std::size_t next = 0; next < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", next), text.size());
        std::string_view line = text.substr(next, end - next);
        line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
        next = end + 2;
        if (!line.starts_with(keyword) || line.find_first_of(blanks) != keyword.size())
            continue;
        line.remove_prefix(line.find_first_not_of(blanks, keyword.size()));
        while (std::count(line.begin(), line.end(), ')') > std::count(line.begin(), line.end(), '('))
            line.remove_suffix(1);
        result.append(result.empty() ? "" : " ").append(line);
    }
    return result;
}
