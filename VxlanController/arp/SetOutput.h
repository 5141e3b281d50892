#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

/// The output of a set of ARP tables, in the two forms that it has: advertised, one table a
/// VNI, and received, one table a switch and VNI. Exported, so that a front end can print a
/// set that it has filled itself.
///
/// Tables come in the order of their VNI text ("100" before "20"), entries in the order of
/// their addresses, switches in that of their names. The text functions write only when the
/// printer is in text mode, the JSON functions only when it is in JSON mode. All of them
/// raise what the printer raises: `outfmt::SigIntException` on the user's interrupt,
/// `outfmt::WriteError` when the output cannot be written. What they print is sure to be on
/// its way after the printer's `flush()` only.
namespace VxlanController {
namespace [[gnu::visibility("default")]] Cli {

/// Prints the advertised table: title, header, one row an entry, an empty line, the total.
/// A null set has no rows.
///
/// An IP address is cut to its first 15 characters, which shortens most IPv6 addresses, so
/// that the columns stay in place. The change count is printed as 32 bits with a sign.
void renderVxlanFdbSetText(outfmt::Printer & printer, Vex::Ptr<VxlanFdbSet const> const & set);

/// The same for the received table, whose rows begin with the name of the switch, cut to
/// its first 19 bytes.
void renderVxlanVtepSetText(outfmt::Printer & printer, Vex::Ptr<VxlanVtepSet const> const & set);

/// Prints the rows of one switch, without header and total, and returns how many these
/// are. A null switch has none.
int renderVxlanVtepText(outfmt::Printer & printer, Vex::Ptr<VxlanVtep const> const & vtep);

/// Renders the advertised tables as one document, {"vnis": {VNI: TABLE}}. A null set is an
/// empty dictionary.
void renderVxlanFdbSetJson(outfmt::Printer & printer, Vex::Ptr<VxlanFdbSet const> const & set);

/// Renders the received tables as one document, {"switches": {SWITCH: {"vnis": {VNI:
/// TABLE}}}}. A null set is an empty dictionary.
void renderVxlanVtepSetJson(outfmt::Printer & printer, Vex::Ptr<VxlanVtepSet const> const & set);

/// Renders one TABLE as a member of the open dictionary, under the text of its VNI:
/// {"addresses": {IP: {"macAddress": MAC, "changes": NUMBER, "preference": NUMBER}}}, with
/// "changes" as 32 bits with a sign. Addresses are whole here. Of a null table, whose VNI
/// nobody knows, nothing is rendered.
void renderVxlanArpTableJson(outfmt::Printer & printer,
                             Vex::Ptr<VxlanArpTable const> const & table);

} // namespace Cli
} // namespace VxlanController
