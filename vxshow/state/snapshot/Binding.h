#pragma once

#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Where a unicast MAC address is: `{ "vtep": IPv4, "moves": N }`, without moves if there were
/// none.
struct Binding {
    Nolt::IpAddr vtep;
    Vex::U32 moves = 0;
};

/// Throws `Refusal` if the value is not a binding.
Binding readBinding(text::JsonValue & value);

/// Writes the member `key` of the open object.
void writeBinding(ValuesWriter & values, std::string_view key, Binding const & binding);

} // namespace vxshow::state::snapshot
