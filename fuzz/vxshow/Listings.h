#pragma once

#include "fuzz/harness/Scratch.h"
#include "vxshow/state/Mount.h"

#include <optional>
#include <string>

namespace fuzz {

/// Renders `mount` with each of the seven commands to `file`, in the format 1 (text), 2 or 3
/// (JSON). Checks that JSON can be read by another reader, and that a command refuses only entries
/// that are published under a name that is no VNI, or twice for one VNI.
void renderAll(vxshow::state::Mount const & mount, unsigned format, Scratch & file);

/// The snapshot of `mount`, which must be one that can be written; nullopt if it holds a name that
/// a snapshot cannot express.
std::optional<std::string> snapshotOf(vxshow::state::Mount const & mount, Scratch & file);

/// The mount of the snapshot `text`; nullopt if it is refused, in one line.
std::optional<vxshow::state::Mount> mountOf(std::string_view text);

/// Checks that the snapshot of `mount` is accepted, and that its snapshot is the same.
void checkSnapshot(vxshow::state::Mount const & mount, Scratch & file);

} // namespace fuzz
