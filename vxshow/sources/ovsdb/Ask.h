#pragma once

#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/ovsdb/Database.h"
#include "vxshow/sources/ovsdb/DatabaseAddress.h"

#include <optional>

namespace vxshow::sources::ovsdb {

/// Reads what is wanted of the database at `address`, in one transaction. `vni` is set if only
/// one VNI is looked at; `wanted` names no logical switches. Raises `Failure`.
///
/// If there are several remotes, they are a cluster: an up-to-date follower is read, or the leader
/// if there is none (ServerStatus.h explains why). While the cluster has no leader, and if the
/// server goes away while it is read, this starts again until the deadline. A single remote is
/// read whatever its role in a cluster, unless it reports that it is cut off.
Answer askDatabase(DatabaseAddress const & address, DatabaseSource const & source,
                   Wanted const & wanted, std::optional<Vxlan::Vni> vni, Deadline const & deadline);

} // namespace vxshow::sources::ovsdb
