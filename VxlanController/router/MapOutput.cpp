#include "VxlanController/router/MapOutput.h"

#include "VxlanController/router/GroupLabel.h"
#include "VxlanController/router/TableParts.h"
#include "outfmt/AttrInfo.h"

namespace VxlanController::Cli {

namespace {

constexpr TextTable mapTable{
    {.title = "Name", .width = 46, .cell = Cell::cutText},
    {.title = "VTEP", .width = 15, .cell = Cell::cutText},
    {.title = "Switch", .width = 17, .cell = Cell::cutText},
};

} // namespace

void renderLRMap(outfmt::Printer & printer, VcsLRMap const * vcsLRMap) {
    outfmt::StringAttrInfo switchId(printer, "switchId");
    outfmt::StringAttrInfo vtepIp(printer, "vtepIp");
    std::size_t rows = 0;

    printer.start();
    printHeader(printer, mapTable, mapTable.rule);
    printer.startDict("logicalRouterMap");
    for (LRMap const & router : vcsLRMap->lRMap()) {
        GroupLabel name(router.lRName());
        rows += router.switchList().size();
        printer.startDict(router.lRName());
        printer.startList("switches");
        for (SwitchMap const & member : router.switchList()) {
            switchId.setValue(member.switchId());
            vtepIp.setValue(member.vtepAddr());
            printer.startListEntry();
            printer.addAttributesJson(2, switchId.getArg(), vtepIp.getArg());
            printer.addFrills(mapTable.row, name.forNextRow(), member.vtepAddr(),
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
