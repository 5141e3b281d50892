#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

#include <string>

/// The documents about VRFs, as zebra writes them. Each function takes a whole document into
/// `join`; throws `Refusal` and `MalformedJson`.
namespace vxshow::sources::frr {

void readFrrVrfs(text::JsonReader & json, FrrJoin & join);
void readFrrInterfaces(text::JsonReader & json, std::string const & vrf, FrrJoin & join);

/// Of one address family.
void readFrrRoutes(text::JsonReader & json, std::string const & vrf, FrrJoin & join);

} // namespace vxshow::sources::frr
