#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

/// Prints a set of ARP tables: the advertised ones, one table per VNI, or the received ones,
/// one table per switch and VNI. Exported, so that a front end can print a set that it has
/// filled itself.
///
/// Tables are ordered by their VNI text ("100" before "20"), entries by address, switches by
/// name. The text functions write only if the printer is in text mode, the JSON functions only
/// if it is in JSON mode. All of them raise what the printer raises: `outfmt::SigIntException`
/// on the user's interrupt, `outfmt::WriteError` if the output cannot be written. The output is
/// buffered until the caller calls the printer's `flush()`.
namespace VxlanController {
namespace [[gnu::visibility("default")]] Cli {

/// Prints the advertised table: title, header, one row per entry, an empty line, the total.
/// A null set has no rows.
///
/// An IP address is cut to its first 15 characters, which shortens most IPv6 addresses, so
/// that the columns stay in place. The change count is printed as a signed 32-bit number.
void renderVxlanFdbSetText(outfmt::Printer & printer, Vex::Ptr<VxlanFdbSet const> const & set);

/// The same for the received table, whose rows begin with the name of the switch, cut to
/// its first 19 bytes.
void renderVxlanVtepSetText(outfmt::Printer & printer, Vex::Ptr<VxlanVtepSet const> const & set);

/// Prints the rows of one switch, without header and total, and returns their number. A null
/// switch has none.
int renderVxlanVtepText(outfmt::Printer & printer, Vex::Ptr<VxlanVtep const> const & vtep);

/// Renders the advertised tables as one document, {"vnis": {VNI: TABLE}}. A null set is an
/// empty dictionary.
void renderVxlanFdbSetJson(outfmt::Printer & printer, Vex::Ptr<VxlanFdbSet const> const & set);

/// Renders the received tables as one document, {"switches": {SWITCH: {"vnis": {VNI:
/// TABLE}}}}. A null set is an empty dictionary.
void renderVxlanVtepSetJson(outfmt::Printer & printer, Vex::Ptr<VxlanVtepSet const> const & set);

/// Renders one TABLE as a member of the open dictionary, under the text of its VNI:
/// {"addresses": {IP: {"macAddress": MAC, "changes": NUMBER, "preference": NUMBER}}}, with
/// "changes" as a signed 32-bit number. Addresses are not cut. Renders nothing for a null
/// table, since its VNI is unknown.
void renderVxlanArpTableJson(outfmt::Printer & printer,
                             Vex::Ptr<VxlanArpTable const> const & table);

} // namespace Cli
} // namespace VxlanController
