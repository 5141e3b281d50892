#include "VxlanController/router/MapOutput.h"

#include "VxlanController/router/NameColumn.h"
#include "VxlanController/router/TableParts.h"
#include "outfmt/AttrInfo.h"

namespace VxlanController::Cli {

void renderLRMap(outfmt::Printer & printer, VcsLRMap const * vcsLRMap) {
    outfmt::StringAttrInfo switchId(printer, "switchId");
    outfmt::StringAttrInfo vtepIp(printer, "vtepIp");
    std::size_t rows = 0;

    printer.start();
    printer.addFrills("%s\n", rule);
    printer.addFrills("%-46.46s %-15.15s %-17.17s\n", "Name", "VTEP", "Switch");
    printer.addFrills("%s\n", rule);
    printer.startDict("logicalRouterMap");
    for (LRMap const & router : vcsLRMap->lRMap()) {
        NameColumn name(router.lRName());
        rows += router.switchList().size();
        printer.startDict(router.lRName());
        printer.startList("switches");
        for (SwitchMap const & member : router.switchList()) {
            switchId.setValue(member.switchId());
            vtepIp.setValue(member.vtepAddr());
            printer.startListEntry();
            printer.addAttributesJson(2, switchId.getArg(), vtepIp.getArg());
            printer.addFrills("%-46.46s %-15.15s %-17.17s\n", name.next(), member.vtepAddr(),
                              member.switchId());
            printer.endListEntry();
        }
        printer.endList();
        printer.endDict();
    }
    printTotal(printer, rows);
    printer.endDict();
    printer.end();
}

} // namespace VxlanController::Cli
