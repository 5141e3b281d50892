#pragma once

#include "vxshow/sources/ovsdb/DatabaseAddress.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

/// Where database servers are, as people write it: `unix:FILE`, `tcp:HOST:PORT` or
/// `ssl:HOST:PORT`, after ovsdb(7), "Connection Methods". HOST is a name, an IPv4 address, or
/// an IPv6 address in brackets, with its zone behind a `%` where it needs one; PORT is from 1
/// to 65535, and left out together with its colon it is 6640.
namespace vxshow::sources::ovsdb {

/// How many servers one database may have.
constexpr std::size_t mostRemotes = 16;

/// What ought to stand in place of `remote`, such as "a PORT from 1 to 65535"; nothing when it
/// is a remote. The file of a `unix:` one has to have an absolute path, as a relative one counts
/// from a folder of Open vSwitch's own, and none may have a blank, a comma or a control
/// character in it: clients separate the remotes of a cluster by commas.
std::optional<std::string> remoteRefusal(std::string_view remote);

/// Whether a remote is opened with keys and certificates.
bool isSslRemote(std::string_view remote);

/// Text that does not tell where a database is. Its text is one line of printable ASCII: `found
/// WHAT, expected WHAT`.
class RemoteError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads `REMOTE[,REMOTE…]`, the servers of one database: at most 16, blanks allowed after the
/// commas. Raises `RemoteError`, also for `ssl:`, since there is no room for its files here.
DatabaseAddress readRemotes(std::string_view text);

} // namespace vxshow::sources::ovsdb
