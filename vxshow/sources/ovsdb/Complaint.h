#pragma once

#include <string>
#include <string_view>

namespace vxshow::sources::ovsdb {

/// Makes the client log warnings to standard error: it says there why TLS failed, and nowhere else.
inline constexpr char const * loggingOption = "-vconsole:warn";

/// Why a client that was run with that option failed to ask `remote`, from its standard error:
/// "unreachable: failed to connect to …", one line of printable ASCII; "" if it says nothing.
std::string complaintOf(std::string_view errors, std::string_view remote);

} // namespace vxshow::sources::ovsdb
