#include "reader/index/Behaviour.h"

#include "reader/index/Index.h"

#include <algorithm>
#include <array>
#include <utility>

namespace reader {

Synchronization synchronizationOf(const Object* message)
{
    constexpr std::array<std::pair<std::string_view, Synchronization>, 7> keywords = {{
        {"Simple", Synchronization::Simple},
        {"Synchronous", Synchronization::Synchronous},
        {"Asynchronous", Synchronization::Asynchronous},
        {"Procedure Call", Synchronization::ProcedureCall},
        {"Return", Synchronization::Return},
        {"Balking", Synchronization::Balking},
        {"Timeout", Synchronization::Timeout},
    }};
    const std::string word = message ? message->text("synchronization") : std::string();
    const auto* const found =
        std::find_if(keywords.begin(), keywords.end(), [&](const auto& each) { return each.first == word; });
    return found == keywords.end() ? Synchronization::Simple : found->second;
}

const Object* messageOf(const Index& index, const Object& view)
{
    const Object* const label = view.object("label");
    return label ? index.element(*label).element : nullptr;
}

// 1 stands for collaborations, 2 for sequences.
bool areMessagesNumbered(const Object* defaults, bool isSequence)
{
    constexpr std::int64_t inAll = 3;
    const std::int64_t shown = defaults ? defaults->integer("showMessageNum", inAll) : inAll;
    return (shown & (isSequence ? 2 : 1)) != 0;
}

StateKind stateKindOf(const Object& view)
{
    const std::string name = view.name();
    if (name == "StartState")
        return StateKind::start;
    return name == "EndState" ? StateKind::end : StateKind::normal;
}

std::string timeOf(const Object& action)
{
    const Object* const time = action.object("ActionTime");
    std::string when = time ? time->text("when") : std::string();
    std::transform(when.begin(), when.end(), when.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return when;
}

std::string classNameOf(const Index& index, const Object& object)
{
    if (const Object* const found = index.element(object).element)
        return shownName(*found);
    const std::string path = object.text("class");
    const std::size_t colons = path.rfind("::");
    return colons == std::string::npos ? path : path.substr(colons + 2);
}

} // namespace reader
