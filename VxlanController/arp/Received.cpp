#include "VxlanController/arp/Collect.h"
#include "VxlanController/arp/SetOutput.h"
#include "VxlanController/command/RenderFrame.h"

/// The command that shows the ARP tables received from switches.
namespace VxlanController::Cli {

void ArpReceived::render(U32 fd, U32 format, U32 /* all revisions print the same */) {
    auto const set = vxlanVtepSetFactory();
    renderFrame(
        fd, format, [&] { collectArp(*this, *set); },
        [&](outfmt::Printer & printer) { renderVxlanVtepSetText(printer, set); },
        [&](outfmt::Printer & printer) { renderVxlanVtepSetJson(printer, set); });
}

} // namespace VxlanController::Cli
