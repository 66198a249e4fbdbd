#include "kiv/KivModelFile.h"

namespace {

std::string messageOf(const std::string& file, const std::vector<ModelFileFault>& faults, std::size_t count)
{
    std::string message;
    for (const ModelFileFault& fault : faults)
        message.append(message.empty() ? "" : "\n")
            .append(file)
            .append(":")
            .append(std::to_string(fault.line))
            .append(":")
            .append(std::to_string(fault.column))
            .append(": ")
            .append(fault.message());
    if (const std::string rest = restOfFaults(count - faults.size()); !rest.empty())
        message.append("\n").append(file).append(": ").append(rest);
    return message;
}

} // namespace

std::string ModelFileFault::message() const
{
    return "error: " + (pointer.empty() ? "" : pointer + ": ") + text;
}

std::string restOfFaults(std::size_t more)
{
    if (more == 0)
        return "";
    return std::to_string(more) + (more == 1 ? " more mistake is not shown" : " more mistakes are not shown");
}

ModelFileError::ModelFileError(const std::string& file, std::vector<ModelFileFault> theFaults, std::size_t theCount)
    : std::runtime_error(messageOf(file, theFaults, theCount)),
      faults(std::make_shared<const std::vector<ModelFileFault>>(std::move(theFaults))), count(theCount)
{
}
