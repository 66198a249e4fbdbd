#pragma once

#include "designs/formats/rose/DrawnDiagram.h"

#include <cstdint>
#include <string>
#include <vector>

namespace design {

/// What happens next in a sequence.
enum class StepKind : std::uint8_t {
    Deactivate,
    Message,
    Activate,
    Destroy,
    Note,
};

struct Step {
    StepKind kind = StepKind::Message;
    const rose::Joint* message = nullptr;
    const rose::DrawnNote* note = nullptr;
    std::vector<const rose::Figure*> figures; ///< whose bar begins or ends, or that a note stands over: one or two
    double height = 0;
};

/// A sequence diagram as a text tells it: participants from the left, then what happens from the top downwards.
struct Sequence {
    std::vector<const rose::Figure*> participants;
    std::vector<Step> steps; ///< none if there are no participants
};
[[nodiscard]] Sequence sequenceIn(const rose::DrawnDiagram& diagram);

/// What a participant or object is drawn as: "actor", "boundary", "control", "entity"; or empty.
[[nodiscard]] std::string iconOf(const rose::Figure& figure);

} // namespace design
