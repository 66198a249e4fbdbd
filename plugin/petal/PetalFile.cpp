#include "petal/PetalFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

// From that size on space is set aside, in steps that grow with the file; for a small file it costs more than it saves.
constexpr std::size_t smallFile = std::size_t{1} << 20;
constexpr std::size_t leastStep = std::size_t{4} << 20;
constexpr std::size_t greatestStep = std::size_t{64} << 20;

} // namespace

PetalFile theFile;

void PetalFile::open(const char* path)
{
    area = std::make_unique_for_overwrite<char[]>(bufferSize);
    file = ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    failed = !isOpen();
    if (failed) {
        area.reset();
        return;
    }
    next = area.get();
    end = next + bufferSize;
    written = 0;
    setAside = 0;
    canSetAside = true;
}

void PetalFile::close()
{
    if (!isOpen())
        return;
    if (!failed)
        writeOut(filled());
    if (setAside > written)
        failed = ftruncate(file, static_cast<off_t>(written)) != 0 || failed;
    failed = ::close(std::exchange(file, -1)) != 0 || failed;
    next = end = nullptr;
    area.reset();
}

bool PetalFile::makeRoom(std::size_t size)
{
    if (failed || size > bufferSize)
        return false;
    const std::size_t position = written + filled();
    const std::size_t lastPiece = position - position % pieceSize;
    if (lastPiece > written && !writeOut(lastPiece - written))
        return false;
    return hasRoom(size) || (writeOut(filled()) && hasRoom(size));
}

void PetalFile::append(std::string_view text)
{
    if (hasRoom(text.size()) || makeRoom(text.size()))
        next = std::copy(text.begin(), text.end(), next);
    else if (!failed && writeOut(filled())) // past the buffer
        write(text);
}

// Writes so many bytes of the buffer; the rest of it moves to the front.
bool PetalFile::writeOut(std::size_t size)
{
    const std::size_t rest = filled() - size;
    if (!write({area.get(), size}))
        return false;
    if (rest > 0)
        std::memmove(area.get(), area.get() + size, rest);
    next += rest;
    return true;
}

// The buffer is empty afterwards. As long as this is under way the file counts as failed: how much a write has taken in
// which the thread is cancelled, nobody knows.
bool PetalFile::write(std::string_view bytes)
{
    failed = true;
    next = end = nullptr;
    if (written >= smallFile && written + bytes.size() > setAside)
        setSpaceAside(bytes.size());
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += static_cast<std::size_t>(count);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    failed = false;
    next = area.get();
    end = next + bufferSize;
    return true;
}

// Pipes and some file systems cannot; writing tells soon enough when there is no space at all.
void PetalFile::setSpaceAside(std::size_t size)
{
    if (!canSetAside)
        return;
    const int error = errno;
    const std::size_t step = size + std::clamp(written, leastStep, greatestStep);
    canSetAside = fallocate(file, FALLOC_FL_KEEP_SIZE, static_cast<off_t>(written), static_cast<off_t>(step)) == 0;
    if (canSetAside)
        setAside = written + step;
    errno = error;
}
