#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

/// The documents about VNIs, as zebra writes them. Each function reads a whole document into
/// `join`, and throws `Refusal` and `MalformedJson`.
namespace vxshow::sources::frr {

/// Of every VNI.
void readVnis(text::JsonReader & json, Collector & join);

/// Of one VNI.
void readVni(text::JsonReader & json, Collector & join);

} // namespace vxshow::sources::frr
