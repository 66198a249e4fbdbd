#pragma once

#include "designs/formats/Format.h"

namespace design::papyrus {

/// The model, its diagrams and the file that opens both. The output itself is the one whose ending it has.
void write(const Writing& writing, Files& files, Report& report);

} // namespace design::papyrus
