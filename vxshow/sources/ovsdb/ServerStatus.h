#pragma once

#include "vxshow/sources/ovsdb/Uuid.h"
#include "vxshow/system/FileBytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The role of a database server in its cluster, and which of several servers to read.
///
/// Reading keeps a server busy: about 9 µs for each MAC address at 100,000 of them. A leader that
/// is busy for longer than the election timer loses its role, and writers wait for the election;
/// 200,000 addresses in one transaction did that ten times out of ten. Reading a follower disturbs
/// nobody, and a healthy follower is current within a millisecond. But one that is cut off from
/// the others serves old data for about two seconds before it notices, so a follower is read only
/// if it has everything that the leader had.
namespace vxshow::sources::ovsdb {

/// The row of the database `hardware_vtep` in a server's own database `_Server`
/// (ovsdb-server(5)).
struct ServerStatus {
    enum class Model {
        standalone,
        clustered,
        relay, ///< serves the data of other servers, which it does not name
    };

    Model model = Model::standalone;
    std::optional<Uuid> cluster = {}; ///< none: not in a cluster, or not joined yet
    bool connected = true;
    bool leader = true;
    std::optional<std::int64_t> index = {}; ///< of the last log entry that is applied

    bool operator==(ServerStatus const &) const = default;
};

/// The transaction that asks for the status.
std::string const & statusRequest();

/// Reads the answer; nullopt if the server has no such database. Raises `AnswerError`.
std::optional<ServerStatus> readServerStatus(system::FileBytes const & answer);

/// The status of several servers, by position; nullopt for one that has not answered.
using Servers = std::vector<std::optional<ServerStatus>>;

/// Whether both can serve the same data: servers of one cluster, or relays, which do not report
/// their database. A standalone server shares its data with no other.
bool areOfOneDatabase(ServerStatus const & one, ServerStatus const & other);

/// The server to read: the first connected one that is standalone or a relay, or the first
/// connected follower that is not behind the leader. nullopt if there is no such server.
std::optional<std::size_t> serverToRead(Servers const & servers);

/// The connected leader; nullopt if there is none. For about two seconds after the others have
/// elected another, a leader that is cut off still reports that it leads: of several, it is the
/// one with the highest index.
std::optional<std::size_t> leaderOf(Servers const & servers);

} // namespace vxshow::sources::ovsdb
