#include "VxlanController/arp/CopyArp.h"
#include "VxlanController/arp/SetOutput.h"
#include "VxlanController/command/RenderFrame.h"
#include "state/VniStatusDirV2.h"

/// The command that shows the ARP tables received from switches.
namespace VxlanController::Cli {

namespace {

/// A switch that matches the switch filter is listed even if nothing else about it matches.
void collect(ArpReceived const & command, VxlanVtepSet & into) {
    ArpFilter const filter{command.vniFilter(), command.macFilter(), command.ipFilter()};
    forEachEntity<VniStatusDirV2>(
        command.switches(), [&](Vex::Name const & name, VniStatusDirV2 const & vnis) {
            if (!command.switchFilter().empty() && name.stringValue() != command.switchFilter()) {
                return;
            }
            auto const vtep = into.vtepIs(name.stringValue());
            for (VniStatusV2 const & status : vnis.vniStatusV2()) {
                copyArpTable(status, status.vni(), command.vniDotted(), filter, *vtep);
            }
        });
}

} // namespace

void ArpReceived::render(U32 fd, U32 format, U32 /* all revisions print the same */) {
    auto const set = vxlanVtepSetFactory();
    renderFrame(
        fd, format, [&] { collect(*this, *set); },
        [&](outfmt::Printer & printer) { renderVxlanVtepSetText(printer, set); },
        [&](outfmt::Printer & printer) { renderVxlanVtepSetJson(printer, set); });
}

} // namespace VxlanController::Cli
