#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/listing/Cell.h"
#include "vxshow/listing/TableColumns.h"

#include <cstddef>

/// The rows of the listings of logical routers. The order is that of the fixed text; every row
/// names its router, which the text shows once.
namespace vxshow::listing {

/// One table, `map`: a row for each switch that a router is on.
extern Tables const routerMapTables;

/// Two tables: `ports`, the IP ports, and `uplinks`, with a row for each physical port of an uplink
/// port. An uplink port that has none is one row, whose port is unknown.
extern Tables const routerDetailTables;

/// One table, `routes`: a row for each nexthop of a route. A route that has none is one row, whose
/// nexthop is unknown.
extern Tables const routerRoutesTables;

/// Passes the rows of a table to `sink`. The command has collected. `table` is the table's place in
/// the listing's tables. Raises what the sink raises.
void walk(VxlanController::Cli::VcsLRMap const & command, std::size_t table, RowSink & sink);
void walk(VxlanController::Cli::VcsLR const & command, std::size_t table, RowSink & sink);
void walk(VxlanController::Cli::VcsLRRoute const & command, std::size_t table, RowSink & sink);

} // namespace vxshow::listing
