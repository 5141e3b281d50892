#include "VxlanController/arp/Collect.h"
#include "VxlanController/arp/SetOutput.h"
#include "VxlanController/command/RenderFrame.h"

/// The command that shows the ARP tables advertised to the controller's destinations.
namespace VxlanController::Cli {

void ArpAdvertised::render(U32 fd, U32 format, U32 /* all revisions print the same */) {
    auto const set = vxlanFdbSetFactory();
    renderFrame(
        fd, format, [&] { collectArp(*this, *set); },
        [&](outfmt::Printer & printer) { renderVxlanFdbSetText(printer, set); },
        [&](outfmt::Printer & printer) { renderVxlanFdbSetJson(printer, set); });
}

} // namespace VxlanController::Cli
