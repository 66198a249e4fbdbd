#pragma once

#include <optional>
#include <string_view>

namespace design {

/// What the host calls a data type, by which it finds the names of C++, Java and Oracle.
struct DataType {
    std::string_view identifier;
    int length = 0;
    int scale = 0;
};

/// The data type that a type of this name means in any of the tools: "String", "EInt", "java.lang.Boolean",
/// "VARCHAR(40)", "NUMBER(10,2)". None for names that mean nothing by themselves.
[[nodiscard]] std::optional<DataType> dataTypeNamed(std::string_view name);

} // namespace design
