#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

/// The documents about VNIs, as zebra writes them. Each function takes a whole document into
/// `join`; throws `Refusal` and `MalformedJson`.
namespace vxshow::sources::frr {

/// Of every VNI.
void readVnis(text::JsonReader & json, Collector & join);

/// Of one VNI.
void readVni(text::JsonReader & json, Collector & join);

} // namespace vxshow::sources::frr
