#pragma once

#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/ovsdb/Database.h"
#include "vxshow/sources/ovsdb/DatabaseAddress.h"

#include <optional>

namespace vxshow::sources::ovsdb {

/// Reads what is wanted of the database at `address`, in one transaction. `vni` is the VNI that
/// is looked at, if it is one; `wanted` names no logical switches. Raises `Failure`.
///
/// Of a cluster, that is of several remotes, a follower that is not behind is read, and the
/// leader when there is none (`OvsdbServerStatus.h` says why). While the cluster has no leader,
/// and when the server that is read goes away, it begins again until the deadline. A single
/// remote is read whatever its part in a cluster is, unless it says that it is cut off.
Answer askDatabase(DatabaseAddress const & address, DatabaseSource const & source,
                   Wanted const & wanted, std::optional<Vxlan::Vni> vni, Deadline const & deadline);

} // namespace vxshow::sources::ovsdb
