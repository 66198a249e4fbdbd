#pragma once

#include "designs/formats/Format.h"

namespace design::ea {

/// The file of a design in the tool's own dialect of XMI 2.1: a UML model, and what else there is in an Extension.
void write(const Writing& writing, Files& files, Report& report);

} // namespace design::ea
