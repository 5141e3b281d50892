#pragma once

#include "Vex/Ptr.h"
#include "state/VniStatusDirV2.h"
#include "vxshow/mount/Json.h"

/// The tables that the controller publishes for each VNI of a switch or source.
namespace vxshow {

/// Fills `tables`, which are empty, from
/// `{ "unicast": …, "multipath": …, "flood": …, "arp": … }`, each of which may be missing.
/// Throws `Refusal`.
void readTables(JsonValue value, VxlanController::VniTables & tables);

/// Reads `{ VNI: TABLES }`. Throws `Refusal`.
Vex::Ptr<VxlanController::VniStatusDirV2> readVniStatusDir(JsonValue value);

} // namespace vxshow
