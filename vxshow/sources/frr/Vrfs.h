#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

#include <string>

/// The documents about VRFs, as zebra writes them. Each function reads a whole document into
/// `join`, and throws `Refusal` and `MalformedJson`.
namespace vxshow::sources::frr {

void readVrfs(text::JsonReader & json, Collector & join);
void readInterfaces(text::JsonReader & json, std::string const & vrf, Collector & join);

/// Of one address family.
void readRoutes(text::JsonReader & json, std::string const & vrf, Collector & join);

} // namespace vxshow::sources::frr
