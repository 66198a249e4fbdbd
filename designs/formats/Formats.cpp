#include "designs/formats/Formats.h"

#include <algorithm>
#include <array>

namespace design {

namespace {

template <class Condition>
const Format* formatWith(const Condition& condition)
{
    const auto all = formats();
    const auto found = std::find_if(all.begin(), all.end(), condition);
    return found == all.end() ? nullptr : &*found;
}

} // namespace

std::span<const Format> formats()
{
    static const std::array table = {
        starUmlFormat(), enterpriseArchitectFormat(),
        papyrusFormat(), umbrelloFormat(),
        xmiFormat(),     ecoreFormat(),
        roseFormat(),    plantUmlFormat(),
        mermaidFormat(),
    };
    return table;
}

const Format* formatNamed(std::string_view name)
{
    return formatWith([name](const Format& format) { return format.name == name; });
}

const Format* formatWrittenTo(std::string_view fileName)
{
    const auto isEnd = [&](std::string_view ending) {
        return fileName.size() > ending.size() && fileName.ends_with(ending);
    };
    const auto hasFirst = [&](const Format& format) { return format.write && isEnd(format.endings.front()); };
    const auto hasAny = [&](const Format& format) {
        return format.write && std::any_of(format.endings.begin(), format.endings.end(), isEnd);
    };
    const Format* const found = formatWith(hasFirst);
    return found ? found : formatWith(hasAny);
}

const Format* formatOf(const Source& source)
{
    return formatWith([&source](const Format& format) { return format.recognizes && format.recognizes(source); });
}

} // namespace design
