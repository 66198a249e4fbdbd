#pragma once

namespace render {

// The libraries that measure and draw go on when a font cannot be opened or memory is short, and warn of an ugly output
// on standard error. Here that is a failure.

/// From now on warnings are kept for `throwIfWarned`; what ends the process is still said. For the calling thread.
void keepWarnings();

/// Throws ImageError with the first warning that came since the last call.
void throwIfWarned();

} // namespace render
