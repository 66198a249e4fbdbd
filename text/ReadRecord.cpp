#include "text/ReadRecord.h"

#include "text/Files.h"

#include <unistd.h>
#include <utility>

namespace text {

namespace {

thread_local ReadRecord* current = nullptr;

} // namespace

ReadRecord::ReadRecord() : outer(std::exchange(current, this)) {}

ReadRecord::~ReadRecord()
{
    current = outer;
}

void ReadRecord::expect(const std::string& path)
{
    struct stat status = {};
    if ((path == "-" ? fstat(STDIN_FILENO, &status) : stat(path.c_str(), &status)) == 0 && S_ISREG(status.st_mode))
        read.push_back({status.st_dev, status.st_ino, fileName(path)});
}

void ReadRecord::note(const std::string& path, const struct stat& status)
{
    for (ReadRecord* record = current; record; record = record->outer)
        if (S_ISREG(status.st_mode))
            record->read.push_back({status.st_dev, status.st_ino, fileName(path)});
}

} // namespace text
