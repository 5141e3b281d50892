#pragma once

namespace vxshow::terminal {

/// From now on an allocation that fails ends this process with `ExitStatus::failed`, after one line
/// on standard error that was prepared before. The child processes are killed, and no
/// temporary file stays; what has been printed of a listing stays cut off.
void exitOnOutOfMemory() noexcept;

} // namespace vxshow::terminal
