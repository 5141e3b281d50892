#include "VxlanController/arp/ArpTableRenderer.h"
#include "VxlanController/arp/Columns.h"
#include "VxlanController/arp/SetOutput.h"

namespace VxlanController {
namespace [[gnu::visibility("default")]] Cli {

namespace {

/// The rule under the title is as wide as the received table, for both tables.
void printArpHeader(outfmt::Printer & printer, char const * title, TextTable const & table) {
    printer.addFrills("%s\n%s\n", title, receivedArpTable.rule);
    printer.addFrills("%s\n%s\n", table.titles, table.underline);
}

/// Switches and the advertised set hold their tables in collections of the same type.
using ArpTables = VxlanFdbSet::ArpTableCollection;

int renderRows(ArpTableRenderer & renderer, ArpTables const & tables) {
    int rows = 0;
    for (VxlanArpTable const & table : tables) {
        for (auto it = table.arpEntry().begin(); it; ++it) {
            renderer.renderIpToMac(it.slot().element(), table.vni());
            ++rows;
        }
    }
    return rows;
}

void printTotal(outfmt::Printer & printer, int rows) {
    printer.addFrills("\n");
    printer.addFrills("Total IP addresses for this criterion: %d\n", rows);
}

} // namespace

void renderVxlanFdbSetText(outfmt::Printer & printer, Vex::Ptr<VxlanFdbSet const> const & set) {
    printArpHeader(printer, "                       Advertised ARP Table", advertisedArpTable);
    AdvertisedArpTableRenderer renderer(printer);
    printTotal(printer, set ? renderRows(renderer, set->arpTable()) : 0);
}

void renderVxlanVtepSetText(outfmt::Printer & printer, Vex::Ptr<VxlanVtepSet const> const & set) {
    printArpHeader(printer, "                        Received ARP Table", receivedArpTable);
    int rows = 0;
    if (set) {
        for (auto it = set->vtep().begin(); it; ++it) {
            rows += renderVxlanVtepText(printer, it.slot().element());
        }
    }
    printTotal(printer, rows);
}

int renderVxlanVtepText(outfmt::Printer & printer, Vex::Ptr<VxlanVtep const> const & vtep) {
    if (!vtep) {
        return 0;
    }
    ReceivedArpTableRenderer renderer(printer, vtep->switchId());
    return renderRows(renderer, vtep->arpTable());
}

} // namespace Cli
} // namespace VxlanController
