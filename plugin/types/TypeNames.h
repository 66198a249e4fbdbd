#pragma once

#include "kiv/KivType.h"

#include <string_view>

/// Names of data types in the type system that the option `BP_SUPPORTED_TYPES` asks for.

/// The enumeration types named so far in this export, in the order in which they were met.
extern KivNameLinkTree<KivType> enumClasses;
/// How many of them, from the front, have been written or were found to be.
extern std::size_t writtenEnumClasses;

/// The name of `type`, which must not be null; valid until the next call. An enumeration has its own name in every
/// type system, and is entered into `enumClasses`.
std::string_view getTypeString(KivType* type);

/// Whether the option names the C++ type system; any value that is none of the four literals gives C++ names too, but
/// is not C++ to those who ask here.
bool isCppTypeSystem();

/// The Java class name of a type.
std::string_view buildJavaTypeName(const KivType* type);
/// The Oracle column type of a type with its length and scale; valid until the next call.
std::string_view buildOracleTypeName(const KivType* type);

/// Empties `enumClasses`, lets go of the last name and forgets the type system.
void releaseTypeNames() noexcept;
