#pragma once

#include <cstdint>
#include <string>

/// What objects, messages and states say of themselves, whoever shows it.

namespace reader {

class Index;
class Object;

/// How a message is sent.
enum class Synchronization : std::uint8_t {
    Simple,
    Synchronous,
    Asynchronous,
    ProcedureCall,
    Return,
    Balking,
    Timeout,
};
/// Of a message; simple for null and for what says nothing known.
[[nodiscard]] Synchronization synchronizationOf(const Object* message);

/// The message that a view shows, by its label, or null.
[[nodiscard]] const Object* messageOf(const Index& index, const Object& view);

/// Whether diagrams show the numbers of messages, by the defaults of the model, which may be null.
[[nodiscard]] bool areMessagesNumbered(const Object* defaults, bool isSequence);

enum class StateKind : std::uint8_t { normal, start, end };
/// Of the view of a state.
[[nodiscard]] StateKind stateKindOf(const Object& view);

/// When an action takes place, in small letters, e.g. "entry"; empty when the file does not say.
[[nodiscard]] std::string timeOf(const Object& action);

/// The name of the class of an object, also when that is not loaded; empty when it has none.
[[nodiscard]] std::string classNameOf(const Index& index, const Object& object);

} // namespace reader
