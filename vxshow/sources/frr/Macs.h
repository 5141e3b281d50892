#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

/// The documents about MAC addresses, as zebra writes them. Each function reads a whole document
/// into `join`, and throws `Refusal` and `MalformedJson`.
namespace vxshow::sources::frr {

/// Of every VNI.
void readMacs(text::JsonReader & json, Collector & join);

/// Of one VNI.
void readMacsOfVni(text::JsonReader & json, Vxlan::Vni vni, Collector & join);

/// Of one MAC address in one VNI.
void readMac(text::JsonReader & json, Vxlan::Vni vni, Collector & join);

} // namespace vxshow::sources::frr
