#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/listing/Cell.h"
#include "vxshow/listing/TableColumns.h"
#include "vxshow/state/Counters.h"

#include <cstddef>

/// The rows of the MAC address listings. Each listing has two tables, `mac` and `flood`. The rows
/// and their order are those of the fixed text.
namespace vxshow::listing {

/// In `flood`, one row for each VTEP of an entry.
extern Tables const macReceivedTables;

/// In `flood`, one row for each VTEP of an entry. An entry that has none is one row, whose VTEP is
/// unknown. A flood list whose MAC address also has a multipath entry is left out.
extern Tables const macAdvertisedTables;

/// Passes the rows of a table to `sink`. The command has collected. `table` is the table's place in
/// `macReceivedTables`. A count of 0 is unknown where `counters` does not keep it. Raises what the
/// sink raises.
void walk(VxlanController::Cli::VcsVniReceived const & command,
          state::KeptCounters const & counters, std::size_t table, RowSink & sink);

/// The same, by `macAdvertisedTables`.
void walk(VxlanController::Cli::VcsVniAdvertised const & command,
          state::KeptCounters const & counters, std::size_t table, RowSink & sink);

} // namespace vxshow::listing
