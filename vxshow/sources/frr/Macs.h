#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

/// The documents about MAC addresses, as zebra writes them. Each function reads a whole document
/// into `join`, and throws `Refusal` and `MalformedJson`.
namespace vxshow::sources::frr {

/// Of every VNI. `detailed`: whether the document has the segments.
void readMacs(text::JsonReader & json, bool detailed, Collector & join);

/// Of one VNI, without the segments.
void readMacsOfVni(text::JsonReader & json, Vxlan::Vni vni, Collector & join);

/// Of one MAC address in one VNI, with its segment.
void readMac(text::JsonReader & json, Vxlan::Vni vni, Collector & join);

} // namespace vxshow::sources::frr
