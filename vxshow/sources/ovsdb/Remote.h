#pragma once

#include "vxshow/sources/ovsdb/DatabaseAddress.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

/// The addresses of database servers as operators write them: `unix:FILE`, `tcp:HOST:PORT` or
/// `ssl:HOST:PORT`, after ovsdb(7), "Connection Methods". HOST is a name, an IPv4 address, or
/// an IPv6 address in brackets, followed by `%` and its zone if it needs one; PORT is from 1 to
/// 65535, or 6640 if it is left out together with its colon.
namespace vxshow::sources::ovsdb {

/// The most servers that one database can have.
constexpr std::size_t mostRemotes = 16;

/// What was expected in place of `remote`, such as "a PORT from 1 to 65535"; nullopt if it is
/// valid. The file of `unix:` needs an absolute path, since a relative one counts from a folder of
/// Open vSwitch's own. No remote contains a blank, a comma or a control character: clients
/// separate the remotes of a cluster by commas.
std::optional<std::string> remoteRefusal(std::string_view remote);

/// Whether a remote is opened with keys and certificates.
bool isSslRemote(std::string_view remote);

/// The name of the host in a valid remote; "" if it has none, or an address.
std::string_view hostName(std::string_view remote);

/// A text is not the address of a database. The error is one line of printable ASCII: `found WHAT,
/// expected WHAT`.
class RemoteError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads `REMOTE[,REMOTE…]`, the servers of one database: at most 16, with optional blanks after
/// the commas. Raises `RemoteError`, also for `ssl:`, since its files cannot be given here.
DatabaseAddress readRemotes(std::string_view text);

} // namespace vxshow::sources::ovsdb
