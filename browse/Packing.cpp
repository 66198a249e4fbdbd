#include "browse/Packing.h"

#include <array>
#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>
#include <zlib.h>

namespace browse {

namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 16U;

} // namespace

struct Packer::Stream {
    Stream()
    {
        if (deflateInit(&state, Z_DEFAULT_COMPRESSION) != Z_OK)
            throw std::bad_alloc();
    }
    ~Stream() { deflateEnd(&state); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    z_stream state = {};
    std::array<char, bufferSize> buffer = {};
};

Packer::Packer(const Sink& sink) : sink(sink), stream(std::make_unique<Stream>()) {}

Packer::~Packer() = default;

void Packer::add(std::string_view text)
{
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, std::numeric_limits<uInt>::max());
        stream->state.next_in = reinterpret_cast<const Bytef*>(piece.data());
        stream->state.avail_in = static_cast<uInt>(piece.size());
        deflate(false);
        text.remove_prefix(piece.size());
    }
}

void Packer::finish()
{
    stream->state.next_in = nullptr;
    stream->state.avail_in = 0;
    deflate(true);
    encode({}, true);
}

void Packer::deflate(bool isLast)
{
    z_stream& state = stream->state;
    do {
        state.next_out = reinterpret_cast<Bytef*>(stream->buffer.data());
        state.avail_out = static_cast<uInt>(bufferSize);
        if (::deflate(&state, isLast ? Z_FINISH : Z_NO_FLUSH) == Z_STREAM_ERROR)
            throw std::logic_error("a text was added behind the end of another");
        encode({stream->buffer.data(), bufferSize - state.avail_out}, false);
    } while (state.avail_out == 0);
}

void Packer::encode(std::string_view bytes, bool isLast)
{
    constexpr std::string_view characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    waiting += bytes;
    const std::size_t whole = waiting.size() / 3 * 3;
    const std::size_t missing = isLast && whole < waiting.size() ? 3 - (waiting.size() - whole) : 0;
    waiting.append(missing, '\0');
    std::string text;
    text.reserve(waiting.size() / 3 * 4);
    std::size_t at = 0;
    for (; at + 3 <= waiting.size(); at += 3) {
        std::uint32_t group = 0;
        for (const char c : std::string_view(waiting).substr(at, 3))
            group = group << 8U | static_cast<unsigned char>(c);
        for (const unsigned shift : {18U, 12U, 6U, 0U})
            text += characters[group >> shift & 0x3FU];
    }
    waiting.erase(0, at);
    text.replace(text.size() - missing, missing, missing, '=');
    if (!text.empty())
        sink(text);
}

void pack(std::string_view text, const Sink& sink)
{
    Packer packer(sink);
    packer.add(text);
    packer.finish();
}

} // namespace browse
