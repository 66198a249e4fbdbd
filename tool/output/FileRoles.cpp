#include "tool/output/FileRoles.h"

#include "tool/output/OutputTarget.h"

#include <unordered_map>

namespace {

// What has been settled so far, by the identities of the files: what a further output would overwrite.
using Taken = std::unordered_map<std::string, std::string>;

void take(Taken& taken, const OutputTarget& target, const char* role)
{
    const std::vector<std::string> identities = target.identities();
    for (const std::string& identity : identities)
        if (const auto found = taken.find(identity); found != taken.end())
            throw FileClash(target.descriptor() < 0
                                ? target.name() + ": " + role + " would overwrite " + found->second
                                : target.name() + ": " + role + " would be mixed with " + found->second);
    for (const std::string& identity : identities)
        taken.emplace(identity, role);
}

} // namespace

void refuseClashes(const std::vector<FileRole>& outputs, const text::ReadRecord& read)
{
    Taken taken;
    for (const text::FileRead& file : read.files())
        taken.emplace(identityOf(file.device, file.inode), file.name + ", which was read");
    for (const FileRole& output : outputs)
        if (!output.path.empty())
            take(taken, OutputTarget(output.path), output.role);
}
