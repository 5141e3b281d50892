#pragma once

#include "vxshow/mount/frr/FrrJoin.h"
#include "vxshow/mount/json/Json.h"

/// The documents about VNIs, MAC and IP addresses, as zebra writes them. Each function takes a
/// whole document into `join`; throws `Refusal` and `MalformedJson`.
namespace vxshow {

void readFrrVnis(JsonReader & json, FrrJoin & join);
void readFrrVni(JsonReader & json, FrrJoin & join);

/// Of every VNI. `detailed` tells whether the segments are in it.
void readFrrMacs(JsonReader & json, bool detailed, FrrJoin & join);
void readFrrMacsOfVni(JsonReader & json, Vxlan::Vni vni, FrrJoin & join);
void readFrrMac(JsonReader & json, Vxlan::Vni vni, FrrJoin & join);

void readFrrSegments(JsonReader & json, FrrJoin & join);

void readFrrNeighbours(JsonReader & json, FrrJoin & join);
void readFrrNeighboursOfVni(JsonReader & json, Vxlan::Vni vni, FrrJoin & join);

} // namespace vxshow
