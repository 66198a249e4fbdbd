#include "petal/PetalFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace {

// From that size on space is set aside, in steps that grow with the file; for a small file it costs more than it saves.
constexpr std::size_t smallFile = std::size_t{1} << 20;
constexpr std::size_t leastStep = std::size_t{4} << 20;
constexpr std::size_t greatestStep = std::size_t{64} << 20;

} // namespace

PetalFile theFile;

bool PetalBuffer::open(const char* path)
{
    if (is_open())
        return false;
    auto newArea = std::make_unique_for_overwrite<char[]>(PetalFile::bufferSize);
    file = ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0)
        return false;
    area = std::move(newArea);
    setp(area.get(), area.get() + PetalFile::bufferSize);
    written = 0;
    setAside = 0;
    canSetAside = true;
    return true;
}

bool PetalBuffer::close()
{
    if (!is_open())
        return false;
    bool success = empty();
    if (setAside > written)
        success = ftruncate(file, static_cast<off_t>(written)) == 0 && success;
    success = ::close(file) == 0 && success;
    file = -1;
    poison();
    area.reset();
    return success;
}

bool PetalBuffer::empty()
{
    return writeUpTo(written + filled());
}

bool PetalBuffer::makeRoom(std::size_t size)
{
    const std::size_t end = written + filled();
    const std::size_t lastPiece = end - end % PetalFile::pieceSize;
    return (lastPiece <= written || writeUpTo(lastPiece)) && (hasRoom(size) || (empty() && hasRoom(size)));
}

// What lies behind `end`, a position in the file, stays in the buffer.
bool PetalBuffer::writeUpTo(std::size_t end)
{
    const std::size_t size = end - written;
    const std::size_t rest = filled() - size;
    setp(pbase(), epptr());
    if (!write({pbase(), size}))
        return false;
    if (rest > 0)
        std::memmove(pbase(), pbase() + size, rest);
    pbump(static_cast<int>(rest));
    return true;
}

PetalBuffer::int_type PetalBuffer::overflow(int_type byte)
{
    if (!is_open() || !area || !empty())
        return traits_type::eof();
    return traits_type::eq_int_type(byte, traits_type::eof()) ? traits_type::not_eof(byte)
                                                              : sputc(traits_type::to_char_type(byte));
}

// What does not fit goes past the buffer.
std::streamsize PetalBuffer::xsputn(const char* text, std::streamsize size)
{
    const std::string_view bytes(text, static_cast<std::size_t>(size));
    if (hasRoom(bytes.size())) {
        take(std::copy(bytes.begin(), bytes.end(), room()));
        return size;
    }
    return is_open() && empty() && write(bytes) ? size : 0;
}

bool PetalBuffer::write(std::string_view bytes)
{
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
    return true;
}

// Pipes and some file systems cannot; writing tells soon enough when there is no space at all.
void PetalBuffer::setSpaceAside(std::size_t size)
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

PetalFile::PetalFile() : std::ostream(nullptr)
{
    rdbuf(&buffer);
}

PetalFile::~PetalFile() = default;

void PetalFile::open(const char* path)
{
    if (!buffer.open(path))
        setstate(failbit);
}

void PetalFile::close()
{
    if (!buffer.close())
        setstate(failbit);
}

void PetalFile::append(std::string_view text)
{
    const auto size = static_cast<std::streamsize>(text.size());
    if (good() && buffer.sputn(text.data(), size) != size)
        giveUp();
}

bool PetalFile::makeRoom(std::size_t size)
{
    if (!good() || size > PetalFile::bufferSize)
        return false;
    if (buffer.makeRoom(size))
        return true;
    giveUp();
    return false;
}

void PetalFile::giveUp()
{
    setstate(badbit);
    buffer.poison();
}
