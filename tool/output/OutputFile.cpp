#include "tool/output/OutputFile.h"

#include "tool/output/FileAttributes.h"
#include "tool/output/Writing.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace {

namespace fs = std::filesystem;

constexpr mode_t forAll = 0666;
constexpr mode_t forOwner = 0600;

// Closes itself; what went wrong by then is to be asked before.
class Descriptor {
public:
    explicit Descriptor(int theNumber) : number(theNumber) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int get() const { return number; }
    bool close() { return number < 0 || ::close(std::exchange(number, -1)) == 0; }

private:
    int number;
};

std::string folderOf(const std::string& path)
{
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

// Reads until there is no more or no more room.
std::size_t readAt(int descriptor, char* to, std::size_t room, std::size_t offset, const std::string& name)
{
    std::size_t length = 0;
    while (length < room) {
        const ssize_t count = pread(descriptor, to + length, room - length, static_cast<off_t>(offset + length));
        if (count < 0 && errno != EINTR)
            failWith(name);
        if (count == 0)
            break;
        length += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return length;
}

// What `work` does in a folder. Its failure is that of the file called `name`, or of the folder where that is the
// reason.
bool inFolder(const std::string& folder, const std::string& name, const std::function<bool()>& work)
{
    try {
        return work();
    } catch (const std::system_error& error) {
        const int reason = error.code().value();
        const bool isFolder = reason == EACCES || reason == EPERM || reason == EROFS;
        throw std::system_error(error.code(), isFolder ? name + ": the folder " + folder + " cannot be written" : name);
    }
}

} // namespace

OutputFile::OutputFile(const std::string& name) : target(name)
{
    const auto earlier = target.isReplaceable() ? earlierFile() : std::nullopt;
    std::error_code error;
    const std::string folder =
        target.isReplaceable() ? folderOf(target.path()) : fs::temp_directory_path(error).string();
    if (error)
        throw std::system_error(error, target.name() + ": the folder for temporary files (TMPDIR)");
    inFolder(folder, target.name(), [&] {
        temporary.emplace(folder, earlier || !target.isReplaceable() ? forOwner : forAll);
        return true;
    });
}

std::optional<struct stat> OutputFile::earlierFile() const
{
    struct stat status = {};
    if (stat(target.path().c_str(), &status) != 0) {
        if (errno == ENOENT)
            return std::nullopt;
        failWith(target.name());
    }
    if (status.st_nlink > 1) // the others would keep the old text
        throw std::runtime_error(target.name() + ": the file has " + std::to_string(status.st_nlink) +
                                 " names (hard links), and only one of them would be replaced");
    return status;
}

void OutputFile::write(std::string_view text)
{
    writeAll(temporary->descriptor(), text, target.name());
}

std::size_t OutputFile::size() const
{
    struct stat status = {};
    if (fstat(temporary->descriptor(), &status) != 0)
        failWith(target.name());
    return static_cast<std::size_t>(status.st_size);
}

bool OutputFile::endsWith(std::string_view ending) const
{
    const std::size_t length = size();
    if (length < ending.size())
        return false;
    std::string tail(ending.size(), '\0');
    readAt(temporary->descriptor(), tail.data(), tail.size(), length - ending.size(), target.name());
    return tail == ending;
}

void OutputFile::provokeWriteError()
{
    // More than a block, so that room left over in the last one does not hide a full disk.
    const std::vector<char> block(std::size_t{1} << 20U);
    if (lseek(temporary->descriptor(), 0, SEEK_END) < 0)
        failWith(target.name());
    writeAll(temporary->descriptor(), {block.data(), block.size()}, target.name());
    if (fsync(temporary->descriptor()) != 0)
        failWith(target.name());
}

void OutputFile::commitAll(const std::vector<OutputFile*>& files)
{
    for (OutputFile* const file : files)
        if (file->target.isReplaceable())
            file->prepare();
    for (OutputFile* const file : files)
        if (!file->target.isReplaceable())
            file->copyToTarget();
    for (OutputFile* const file : files)
        if (file->target.isReplaceable())
            file->placeAtTarget();
}

// Does everything that can fail save giving the name.
void OutputFile::prepare()
{
    if (const auto earlier = earlierFile())
        takeOverAttributes(temporary->descriptor(), target.path(), *earlier, target.name());
    else
        temporary->takeUsualMode();
    if (fsync(temporary->descriptor()) != 0)
        failWith(target.name());
}

void OutputFile::placeAtTarget()
{
    const std::string& path = target.path();
    const std::string folderName = folderOf(path);
    const bool isThere = earlierFile().has_value();
    const bool isPlaced = inFolder(folderName, target.name(), [&] { return !isThere && temporary->placeAt(path); });
    if (!isThere && !isPlaced) // it came meanwhile
        prepare();
    inFolder(folderName, target.name(), [&] { return isPlaced || temporary->replace(path); });
    // The new name lasts only when the folder does; a file system that cannot say so is not a failure of the export.
    const Descriptor folder(open(folderName.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.get() >= 0)
        fsync(folder.get());
}

void OutputFile::copyToTarget()
{
    Descriptor opened(target.descriptor() >= 0 ? -1 : open(target.path().c_str(), O_WRONLY | O_CLOEXEC));
    const int descriptor = target.descriptor() >= 0 ? target.descriptor() : opened.get();
    if (descriptor < 0)
        failWith(target.name());
    std::vector<char> piece(std::size_t{256} * 1024);
    for (std::size_t offset = 0;;) {
        const std::size_t count = readAt(temporary->descriptor(), piece.data(), piece.size(), offset, target.name());
        writeAll(descriptor, {piece.data(), count}, target.name());
        offset += count;
        if (count < piece.size())
            break;
    }
    if (!opened.close())
        failWith(target.name());
}
