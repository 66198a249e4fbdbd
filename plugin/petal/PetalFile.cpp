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

void PetalFile::appendSlowly(std::string_view text)
{
    if (!good() || text.empty())
        return;
    const auto size = static_cast<std::streamsize>(text.size());
    if (buffer.sputn(text.data(), size) != size) {
        setstate(badbit);
        buffer.poison();
    }
}
