#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/Json.h"

/// The documents about VNIs, as zebra writes them. Each function takes a whole document into
/// `join`; throws `Refusal` and `MalformedJson`.
namespace vxshow::sources::frr {

/// Of every VNI.
void readFrrVnis(text::JsonReader & json, FrrJoin & join);

/// Of one VNI.
void readFrrVni(text::JsonReader & json, FrrJoin & join);

} // namespace vxshow::sources::frr
