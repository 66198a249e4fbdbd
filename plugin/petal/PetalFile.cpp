#include "petal/PetalFile.h"

namespace {

// From here on a larger buffer makes writing no faster.
constexpr std::size_t areaSize = std::size_t{256} * 1024;

} // namespace

PetalFile theFile;

PetalFile::PetalFile() : std::ostream(nullptr)
{
    rdbuf(&buffer);
}

PetalFile::~PetalFile() = default;

void PetalFile::open(const char* path)
{
    area = std::make_unique<char[]>(areaSize);
    buffer.pubsetbuf(area.get(), static_cast<std::streamsize>(areaSize));
    if (!buffer.open(path, std::ios_base::out | std::ios_base::trunc))
        setstate(failbit);
}

void PetalFile::close()
{
    if (!buffer.close())
        setstate(failbit);
    area.reset();
}

void PetalFile::append(std::string_view text)
{
    const auto size = static_cast<std::streamsize>(text.size());
    if (good() && buffer.sputn(text.data(), size) != size)
        giveUp();
}

char* PetalFile::makeRoom(std::size_t size)
{
    if (!good() || size >= areaSize)
        return nullptr;
    if (!buffer.empty()) {
        giveUp();
        return nullptr;
    }
    return buffer.room(size);
}

void PetalFile::giveUp()
{
    setstate(badbit);
    buffer.poison();
}
