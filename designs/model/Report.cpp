#include "designs/model/Report.h"

namespace design {

void Report::left(std::string_view kind, std::string_view id, std::string_view name, std::string_view reason)
{
    leftEntries_.push_back({std::string(kind), std::string(id), std::string(name), std::string(reason)});
}

void Report::made(std::string_view kind, std::string_view id, std::string_view name, std::string_view reason)
{
    madeEntries_.push_back({std::string(kind), std::string(id), std::string(name), std::string(reason)});
}

void Report::takeBack(const std::function<bool(const ReportEntry&)>& isTaken)
{
    std::erase_if(leftEntries_, isTaken);
}

} // namespace design
