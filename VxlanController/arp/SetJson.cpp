#include "VxlanController/arp/Changes.h"
#include "VxlanController/arp/SetOutput.h"
#include "VxlanController/command/ValueText.h"
#include "outfmt/AttrInfo.h"

namespace VxlanController {
namespace [[gnu::visibility("default")]] Cli {

namespace {

/// Switches and the advertised set hold their tables in collections of the same type.
void renderVnis(outfmt::Printer & printer, VxlanFdbSet::ArpTableCollection const & tables) {
    for (auto it = tables.begin(); it; ++it) {
        renderVxlanArpTableJson(printer, it.slot().element());
    }
}

} // namespace

void renderVxlanFdbSetJson(outfmt::Printer & printer, Vex::Ptr<VxlanFdbSet const> const & set) {
    printer.start();
    printer.startDict("vnis");
    if (set) {
        renderVnis(printer, set->arpTable());
    }
    printer.endDict();
    printer.end();
}

void renderVxlanVtepSetJson(outfmt::Printer & printer, Vex::Ptr<VxlanVtepSet const> const & set) {
    printer.start();
    printer.startDict("switches");
    if (set) {
        for (VxlanVtep const & vtep : set->vtep()) {
            printer.startDict(vtep.switchId());
            printer.startDict("vnis");
            renderVnis(printer, vtep.arpTable());
            printer.endDict();
            printer.endDict();
        }
    }
    printer.endDict();
    printer.end();
}

void renderVxlanArpTableJson(outfmt::Printer & printer,
                             Vex::Ptr<VxlanArpTable const> const & table) {
    if (!table) {
        return;
    }
    outfmt::StringAttrInfo macAddress(printer, "macAddress");
    outfmt::Attr32Info changes(printer, "changes");
    outfmt::Attr32Info preference(printer, "preference");

    printer.startDict(table->vni());
    printer.startDict("addresses");
    for (VxlanArpEntry const & entry : table->arpEntry()) {
        macAddress.setValue(entry.macAddress());
        changes.setValue(signedChanges(entry));
        preference.setValue(entry.preference());
        printer.startDict(ValueText(entry.ipAddress()).view());
        printer.addAttributesJson(3, macAddress.getArg(), changes.getArg(), preference.getArg());
        printer.endDict();
    }
    printer.endDict();
    printer.endDict();
}

} // namespace Cli
} // namespace VxlanController
