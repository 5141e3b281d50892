#include "VxlanController/command/RenderFrame.h"
#include "VxlanController/router/MapOutput.h"

/// The command that shows which switches each logical router is present on.
namespace VxlanController::Cli {

void VcsLRMap::render(U32 fd, U32 format, U32 /* all revisions print the same */) {
    auto const print = [&](outfmt::Printer & printer) { renderLRMap(printer, this); };
    renderFrame(
        fd, format, [&] { buildLRMap(lRNameFilter(), switchFilter(), vtepFilter()); }, print,
        print);
}

} // namespace VxlanController::Cli
