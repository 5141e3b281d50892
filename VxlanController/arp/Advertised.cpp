#include "VxlanController/arp/CopyArp.h"
#include "VxlanController/arp/SetOutput.h"
#include "VxlanController/command/RenderFrame.h"
#include "state/VniFdbStatusV2.h"

#include <string>

/// The command that shows the ARP tables advertised to the controller's destinations.
namespace VxlanController::Cli {

namespace {

/// Parses the name of a directory entry as a VNI, the way `std::stoi` reads a number. Raises
/// the exceptions of `std::stoi` for a name that is not a 32-bit number, and `Vex::RangeError`
/// for a number that is not a VNI. A negative number counts as unsigned, so it is too large.
Vxlan::Vni vniNamed(Vex::Name const & name) {
    return Vxlan::Vni(static_cast<Vex::U32>(std::stoi(name.stringValue())));
}

/// Several names can denote one VNI, such as "10" and "010"; their entries share its table.
void collect(ArpAdvertised const & command, VxlanFdbSet & into) {
    ArpFilter const filter{command.vniFilter(), command.macFilter(), command.ipFilter()};
    forEachEntity<VniFdbStatusV2>(
        command.vniStatusDir(), [&](Vex::Name const & name, VniFdbStatusV2 const & status) {
            copyArpTable(status, vniNamed(name), command.vniDotted(), filter, into);
        });
}

} // namespace

void ArpAdvertised::render(U32 fd, U32 format, U32 /* all revisions print the same */) {
    auto const set = vxlanFdbSetFactory();
    renderFrame(
        fd, format, [&] { collect(*this, *set); },
        [&](outfmt::Printer & printer) { renderVxlanFdbSetText(printer, set); },
        [&](outfmt::Printer & printer) { renderVxlanFdbSetJson(printer, set); });
}

} // namespace VxlanController::Cli
