#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Renders "vniInDottedNotation" and the list "vnis" in the open dictionary, each VNI with
/// "macAddress", "vni", "unicastHostTable" and "bumVtepListTable". Each source of the received
/// document has this form, and so has the advertised document as a whole. A null list counts as
/// empty. Only revision 1 has "timeLearned" in a unicast entry; it is always 0.
void renderVniList(outfmt::Printer & printer, bool dotted,
                   Vex::Ptr<VniStatusList const> const & vnis, Vex::U32 revision);

/// The two tables of one VNI on their own, in an open dictionary. Each raises what the printer
/// raises.

/// Renders the list "unicastHostTable".
void renderUcastTable(VniStatus const * status, outfmt::Printer & printer, Vex::U32 revision);

/// Renders the list "bumVtepListTable", multipath entries first. The type of an entry depends
/// only on its table, so a MAC in both tables is listed twice.
void renderFdbBumTable(VniStatus const * status, outfmt::Printer & printer);

/// The same for the received tables.
void renderBumTable(VniStatus const * status, outfmt::Printer & printer);

} // namespace VxlanController::Cli
