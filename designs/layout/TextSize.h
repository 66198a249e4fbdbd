#pragma once

#include "designs/model/Design.h"

namespace design {

struct Size {
    double width = 0;
    double height = 0;
};

/// How much room the text of a class box takes, without any around it, in pixels: name, stereotype, attributes and
/// operations, one a line. Widths are those of Arial, which the reader of the exported file has, whatever fonts the
/// machine of the import has.
[[nodiscard]] Size textSize(const Classifier& classifier, double fontSize);

/// A comfortable size for the box of a class that nobody sized.
[[nodiscard]] Size boxSize(const Classifier& classifier, double fontSize);

/// The font size that a box gets when the file tells none.
inline constexpr double defaultFontSize = 10;

} // namespace design
