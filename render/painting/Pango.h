#pragma once

#include "render/paper/PictureLibrary.h"

namespace render {

/// By the fonts of this machine. What it gives is for one thread.
[[nodiscard]] TextWidths newTextWidths();

} // namespace render
