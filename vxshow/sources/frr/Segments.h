#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

namespace vxshow::sources::frr {

/// Reads the document about Ethernet segments and their VTEPs, as zebra writes it, into `join`.
/// Throws `Refusal` and `MalformedJson`.
void readSegments(text::JsonReader & json, Collector & join);

} // namespace vxshow::sources::frr
