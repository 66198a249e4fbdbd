#pragma once

#include "designs/formats/Format.h"

namespace design {

/// Umbrello's files, in its forms of XMI 1.2 and 2.1, with the diagrams in an extension; other UML 1.x in XMI 1.2 too.
[[nodiscard]] Format umbrelloFormat();

} // namespace design
