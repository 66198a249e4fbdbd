#pragma once

#include <string>
#include <string_view>

namespace design::ecore {

/// The data type of Ecore itself that a type of this name means in designs, such as "EString" for "String"; empty for
/// names that mean nothing by themselves.
[[nodiscard]] std::string_view ecoreTypeNamed(std::string_view name);

/// Whether a value of a data type of Ecore can be written so. Nothing is known of other types, which take nothing.
[[nodiscard]] bool isLiteralOf(std::string_view ecoreType, std::string_view text);

/// The Java class of the values of a type of that name; `java.lang.Object` where nothing is known.
[[nodiscard]] std::string_view javaClassNamed(std::string_view name);

/// A link to a data type of Ecore.
[[nodiscard]] std::string linkTo(std::string_view ecoreType);

} // namespace design::ecore
