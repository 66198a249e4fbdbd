#pragma once

#include <string_view>

/// The page around the model, made of page.html, page.css and the scripts in page/ when the program is built.

namespace browse {

[[nodiscard]] std::string_view beforeTitle();
[[nodiscard]] std::string_view beforeModel();
[[nodiscard]] std::string_view beforePictures();
[[nodiscard]] std::string_view afterPictures();

} // namespace browse
