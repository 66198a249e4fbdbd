#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace browse {

/// Takes the page piece by piece.
using Sink = std::function<void(std::string_view)>;

/// Packs one text for a page, piece by piece: deflated, in the characters of Base64. The script of the page unpacks it
/// by what the browser brings. Whatever the text holds, nothing in the packed one ends or begins an element of the
/// page.
class Packer {
public:
    explicit Packer(const Sink& sink);
    ~Packer();
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;

    void add(std::string_view text);
    /// Hands on the rest; nothing may be added behind it.
    void finish();

private:
    struct Stream;
    void deflate(bool isLast);
    void encode(std::string_view bytes, bool isLast);

    const Sink& sink;
    std::unique_ptr<Stream> stream;
    std::string waiting; // bytes that make no whole group of three yet
};

/// Packs a whole text.
void pack(std::string_view text, const Sink& sink);

} // namespace browse
