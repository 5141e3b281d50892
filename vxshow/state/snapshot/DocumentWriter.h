#pragma once

#include "outfmt/Printer.h"
#include "vxshow/state/Mount.h"

namespace vxshow::state::snapshot {

/// Writes what is mounted as a snapshot: the document of which `readSnapshot` makes the same
/// mount, as far as any command can tell. Its order depends on the content alone, so the same
/// state gives the same bytes. `printer` prints JSON.
///
/// Throws `Unwritable` for what a snapshot has no words for, since a document that is left
/// with half of a name or without a source would be taken for the whole; the exceptions of
/// the printer; and `Pelo::CorruptionDetectedException` for a shared table that is damaged.
void writeSnapshot(Mount const & mount, outfmt::Printer & printer);

} // namespace vxshow::state::snapshot
