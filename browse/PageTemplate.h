#pragma once

#include <string>
#include <string_view>

/// The pages around what is written into them, made of the HTML, the styles and the scripts when the program is built.

namespace browse {

struct PageTemplate {
    std::string_view beforeTitle;
    std::string_view beforeModel;
    std::string_view beforePictures;
    std::string_view afterPictures;
};

[[nodiscard]] const PageTemplate& modelPage();
[[nodiscard]] const PageTemplate& changesPage();

/// A text as it stands in an element of a page.
[[nodiscard]] std::string escapedText(std::string_view text);

} // namespace browse
