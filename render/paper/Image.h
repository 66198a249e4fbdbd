#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace render {

enum class ImageFormat : std::uint8_t { svg, png, pdf };

/// A picture that cannot be made; `what()` says why.
class ImageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The file of a picture in a format. `svg` is what `svgOf` gave. A PNG file has twice the dots of a screen, fewer when
/// it would be too large; `warn` is told then. Throws ImageError, and loading::NotLoaded when there is no library that
/// makes them.
[[nodiscard]] std::string imageOf(const std::string& svg, ImageFormat format,
                                  const std::function<void(const std::string&)>& warn);

} // namespace render
