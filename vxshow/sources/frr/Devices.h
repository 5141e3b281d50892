#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

namespace vxshow::sources::frr {

/// Reads the document about every interface of the machine: which are VXLAN devices that are up.
/// Throws `Refusal` and `MalformedJson`.
void readDevices(text::JsonReader & json, Collector & join);

/// Reads the document about the states of these interfaces: which are down. Throws `Refusal` and
/// `MalformedJson`.
void readDeviceStates(text::JsonReader & json, Collector & join);

} // namespace vxshow::sources::frr
