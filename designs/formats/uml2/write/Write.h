#pragma once

#include "designs/formats/Format.h"

namespace design::uml2 {

/// The model file of a design, without its diagrams.
void write(const Writing& writing, Files& files, Report& report);

} // namespace design::uml2
