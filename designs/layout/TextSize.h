#pragma once

#include "designs/model/Catalogue.h"
#include "designs/model/Design.h"

namespace design {

struct Size {
    double width = 0;
    double height = 0;
};

/// How large a box must be for the host to show in it what it shows of a class: name, stereotype, and the attributes
/// and operations that it does not hide, one a line; in pixels. Widths are those of Arial, which the reader of the
/// exported file has, whatever fonts the machine of the import has.
[[nodiscard]] Size neededSize(const Classifier& classifier, const Box& box, const Catalogue& catalogue);

/// A comfortable size for the box of a class that nobody sized.
[[nodiscard]] Size boxSize(const Classifier& classifier, const Box& box, const Catalogue& catalogue);

/// The same for the box of a package, with its tab.
[[nodiscard]] Size boxSize(const Package& package, const Box& box);

/// The font size that a box gets when the file tells none.
inline constexpr double defaultFontSize = 10;

} // namespace design
