#include "VxlanController/mac/AdvertisedText.h"

#include "VxlanController/mac/Row.h"

namespace VxlanController::Cli {

namespace {

/// The long line of the flood section is shorter than its column line, that of the unicast
/// section longer; and the title is indented by three more than a received one. Scripts
/// know the sections by these lines.
void printFdbHeader(outfmt::Printer & printer, char const * title, bool flood) {
    printer.addFrills("            %s\n", title);
    if (flood) {
        printer.addFrills("%s\n\n", "---------------------------------------------------");
        printer.addFrills("%s\n", "VNI         Mac Address       VTEP(s)");
        printer.addFrills("%s\n", "----------- ----------------- "
                                  "-----------------------------------------------");
    } else {
        printer.addFrills("%s\n\n", "---------------------------------------------------"
                                    "--------------------------");
        printer.addFrills("%s\n", "VNI         Mac Address       VTEP            Moves");
        printer.addFrills("%s\n", "----------- ----------------- --------------- -----");
    }
}

void printFdbUcastTable(outfmt::Printer & printer, Vex::String const & vni,
                        VniStatus const & status, int & counter) {
    for (MacVtep const & entry : status.macVtepTable()) {
        printer.addFrillsUpTo(maxRowLength, "%-11s %-15s %-15s %5d\n", vni,
                              DisplayMac(entry.macAddr()), entry.vtepIp(),
                              signedCount(entry.moveCount()));
        ++counter;
    }
}

/// One entry: VNI, MAC and three VTEPs a line. Further lines are indented by 29, two more
/// than the VTEPs of the first. An entry without VTEPs still takes a line.
template <class VtepIps>
void printVtepLines(outfmt::Printer & printer, Vex::String const & vni, Nolt::EthAddr const & mac,
                    VtepIps const & vteps) {
    constexpr int vtepsPerLine = 3;
    printer.addFrills("%-11s %-15s", vni, DisplayMac(mac));
    int printed = 0;
    for (Nolt::IpAddr vtep : vteps) {
        if (printed > 0 && printed % vtepsPerLine == 0) {
            printer.addFrills("\n%-29s", " ");
        }
        printer.addFrills(" %-15s", vtep);
        ++printed;
    }
    printer.addFrills("\n");
}

/// Multipath entries first. A MAC that has one is not printed again from the flood lists,
/// unlike in the received table.
void printFdbBumTable(outfmt::Printer & printer, Vex::String const & vni, VniStatus const & status,
                      int & counter) {
    for (MacVtepMultiPath const & entry : status.macVtepMultiPathTable()) {
        printVtepLines(printer, vni, entry.macAddr(), entry.vtepIpList());
        ++counter;
    }
    for (MacVtepFloodList const & entry : status.macVtepFloodListTable()) {
        if (!status.macVtepMultiPathTableHas(entry.macAddr())) {
            printVtepLines(printer, vni, entry.macAddr(), entry.vtepIpFloodList());
            ++counter;
        }
    }
}

void printFdbTable(outfmt::Printer & printer, TableKind kind, bool dotted,
                   Vex::Ptr<VniStatusList const> const & vnis) {
    int counter = 0;
    auto const printVni = kind == TableKind::ucast ? printFdbUcastTable : printFdbBumTable;
    if (vnis) {
        for (VniStatus const & status : vnis->vniEntry()) {
            printVni(printer, status.vni().stringValue(dotted), status, counter);
        }
    }
    printer.addFrills("Total Mac Addresses for this criterion: %d\n", counter);
}

} // namespace

void printFdbText(outfmt::Printer & printer, bool dotted,
                  Vex::Ptr<VniStatusList const> const & vnis) {
    printFdbHeader(printer, "Advertised Mac Address Table", false);
    printFdbTable(printer, TableKind::ucast, dotted, vnis);
    printer.addFrills("\n");
    printFdbHeader(printer, "Advertised Flood Table", true);
    printFdbTable(printer, TableKind::bum, dotted, vnis);
}

} // namespace VxlanController::Cli
