#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

/// The documents about IP addresses and the MAC addresses they belong to, as zebra writes them.
/// Each function reads a whole document into `join`, and throws `Refusal` and `MalformedJson`.
namespace vxshow::sources::frr {

/// Of every VNI.
void readNeighbours(text::JsonReader & json, Collector & join);

/// Of one VNI.
void readNeighboursOfVni(text::JsonReader & json, Vxlan::Vni vni, Collector & join);

} // namespace vxshow::sources::frr
