#pragma once

#include "text/JsonWriter.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// The places of what the lists of the page's model say. The script of the page gets the same names from here when the
/// program is built.

namespace browse {

enum class FileField : std::uint8_t { name, version, encoding, writtenBy };
enum class FaultField : std::uint8_t { place, text };
enum class MissingField : std::uint8_t { file, reason, stub };
enum class KindField : std::uint8_t { word, icon, group, forward, backward, isRelation };
enum class ElementField : std::uint8_t { kind, parent, name, id, details };
enum class DiagramField : std::uint8_t { element, items };
enum class ParameterField : std::uint8_t { name, type, target, value, documentation };
enum class TypeField : std::uint8_t { name, target };
enum class TargetField : std::uint8_t { name, target, state };
enum class EndField : std::uint8_t { role, multiplicity, name, target, state, flags, documentation };

/// Writes the values of the list that is open. One that is not at its place does not compile.
template <typename Field, std::size_t next = 0>
class FieldWriter {
public:
    explicit FieldWriter(text::JsonWriter& target) : json(target) {}

    /// `value` may also be a function that writes the value.
    template <Field field, typename Value>
    FieldWriter<Field, next + 1> add(const Value& value)
    {
        static_assert(static_cast<std::size_t>(field) == next, "the values stand in the order of the fields");
        if constexpr (std::is_invocable_v<Value>)
            value();
        else
            json.value(value);
        return FieldWriter<Field, next + 1>(json);
    }

private:
    text::JsonWriter& json;
};

} // namespace browse
