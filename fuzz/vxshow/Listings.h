#pragma once

#include "fuzz/harness/Scratch.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace fuzz {

/// Lists `mount` with each of the seven commands, in the format 1 (text), 2 or 3 (JSON). Checks
/// that JSON can be read by another reader, and that a command refuses nothing but entries that are
/// published under a name that is no VNI, or that contradict each other.
void listAll(vxshow::state::Mount const & mount, unsigned format, Scratch & file);

/// Lists the snapshot `text`, which is accepted as `mount`, with a command that has filters;
/// `which` chooses it. Checks that a mount of only what the command selects gives the same listing.
void listSelected(std::string_view text, vxshow::state::Mount const & mount, std::size_t which,
                  Scratch & file);

/// The snapshot of `mount`; nullopt if it holds a name that a snapshot cannot express.
std::optional<std::string> snapshotOf(vxshow::state::Mount const & mount, Scratch & file);

/// The mount of what is selected of the snapshot `text`; nullopt if it is refused, in one line.
std::optional<vxshow::state::Mount> mountOf(std::string_view text,
                                            vxshow::state::Selection const & selection = {});

/// Checks that the snapshot of `mount` is accepted, and that its snapshot is the same.
void checkSnapshot(vxshow::state::Mount const & mount, Scratch & file);

} // namespace fuzz
