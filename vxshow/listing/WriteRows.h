#pragma once

#include "vxshow/listing/Plan.h"
#include "vxshow/listing/Shown.h"

#include <cstddef>
#include <functional>

namespace vxshow::listing {

/// Passes the rows of the table with this number to the sink.
using WalkTable = std::function<void(std::size_t table, RowSink & sink)>;

/// Writes the tables of a plan to `fd`. Where wide has several, an empty line is between them.
///
/// If only the count was asked for, it is a row for each table: in CSV with the column `count`, in
/// JSON lines with `table` and `count`, in wide with both.
///
/// An interrupted listing ends at the end of a line. Raises `outfmt::SigIntException` on the user's
/// interrupt, and `outfmt::WriteError` if the output cannot be written.
void writeRows(int fd, Plan const & plan, Tables tables, Surface const & surface,
               WalkTable const & walk);

} // namespace vxshow::listing
