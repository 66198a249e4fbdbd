#pragma once

#include "designs/formats/Format.h"

namespace design::ecore {

/// The file of a design: classes with attributes, references and operations, data types and enumerations in packages.
void write(const Writing& writing, Files& files, Report& report);

} // namespace design::ecore
