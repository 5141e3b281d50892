#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/listing/Cell.h"
#include "vxshow/listing/TableColumns.h"
#include "vxshow/state/Counters.h"

#include <cstddef>

/// The rows of the ARP listings. Each listing has one table, `arp`. The rows and their order are
/// those of the fixed text: VNIs are ordered by their text.
namespace vxshow::listing {

extern Tables const arpReceivedTables;
extern Tables const arpAdvertisedTables;

/// Passes the rows of what was collected to `sink`. `table` is 0. A count of 0 is unknown where
/// `counters` does not keep it. Raises what the sink raises.
void walk(VxlanController::Cli::VxlanVtepSet const & collected,
          state::KeptCounters const & counters, std::size_t table, RowSink & sink);
void walk(VxlanController::Cli::VxlanFdbSet const & collected, state::KeptCounters const & counters,
          std::size_t table, RowSink & sink);

} // namespace vxshow::listing
