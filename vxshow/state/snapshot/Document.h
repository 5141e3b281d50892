#pragma once

#include "outfmt/Printer.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads a whole snapshot document, version 1, and mounts what is selected. Throws `Refusal`,
/// `MalformedJson`, and `Pelo::TableError` if there is no room for a table.
Mount readDocument(text::JsonReader & json, Selection const & selection);

/// Writes a mount as a snapshot, from which `readSnapshot` makes the same mount, as far as any
/// command shows it. The order depends on the content alone, so the same state gives the same
/// bytes. `printer` must print JSON.
///
/// Throws `Unwritable` for what a snapshot cannot express, since a document with half of a name or
/// without a source would be mistaken for a complete one; the exceptions of the printer; and
/// `Pelo::CorruptionDetectedException` for a damaged shared table.
void writeSnapshot(Mount const & mount, outfmt::Printer & printer);

} // namespace vxshow::state::snapshot
