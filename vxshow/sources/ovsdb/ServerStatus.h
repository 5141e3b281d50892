#pragma once

#include "vxshow/sources/ovsdb/Uuid.h"
#include "vxshow/system/FileBytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What a database server says of its part in a cluster, and which of several is read.
///
/// A reading keeps the server busy: about 9 µs for each MAC address at 100,000 of them. A
/// leader that is busy for longer than the election timer loses its office, and writers wait
/// for the election; 200,000 addresses in one transaction did that ten times of ten. Reading
/// from a follower never disturbs, and a healthy follower is current within a millisecond. But
/// one that is cut off from the others answers old data for some two seconds before it knows,
/// so a follower is read when it has all that the leader had.
namespace vxshow::sources::ovsdb {

/// The row of the database `hardware_vtep` in a server's own database `_Server`
/// (ovsdb-server(5)).
struct ServerStatus {
    enum class Model {
        standalone,
        clustered,
        relay, ///< hands on what servers have that it does not name
    };

    Model model = Model::standalone;
    std::optional<Uuid> cluster = {}; ///< none: it is in none, or has not joined it yet
    bool connected = true;
    bool leader = true;
    std::optional<std::int64_t> index = {}; ///< of the last entry of the log that is applied

    bool operator==(ServerStatus const &) const = default;
};

/// The transaction that asks for it.
std::string const & statusRequest();

/// Reads the answer. Nothing when the server has no such database. Raises `AnswerError`.
std::optional<ServerStatus> readServerStatus(system::FileBytes const & answer);

/// What several servers have answered, by position; nothing for one that has not.
using Servers = std::vector<std::optional<ServerStatus>>;

/// Whether both may be asked for the same: servers of one cluster, or relays, which do not tell
/// of what. Nobody has the same as a server alone.
bool areOfOneDatabase(ServerStatus const & one, ServerStatus const & other);

/// The server to read from: the first connected one that is alone or a relay, or the first
/// connected follower that is not behind the leader. Nothing when there is no such server.
std::optional<std::size_t> serverToRead(Servers const & servers);

/// The connected leader; nothing when none of them is. For some two seconds after the others
/// have chosen another, one that is cut off takes itself for the leader still: of several it is
/// the one with the most.
std::optional<std::size_t> leaderOf(Servers const & servers);

} // namespace vxshow::sources::ovsdb
