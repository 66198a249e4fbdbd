#pragma once

#include "kiv/KivObject.h"

namespace modelfile {

/// Whether an object is of one of the model's own classes, and not of a class that a host derived from one: what that
/// one adds or answers differently no model file can say.
[[nodiscard]] bool isKnownClass(const KivObject& object);

} // namespace modelfile
