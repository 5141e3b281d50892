#include "VxlanController/mac/AdvertisedText.h"

#include "Vex/Assert.h"
#include "VxlanController/mac/Columns.h"
#include "VxlanController/mac/Row.h"

namespace VxlanController::Cli {

namespace {

constexpr unsigned vtepsPerLine = 3;

constexpr Column vtepsColumn{.title = "VTEP(s)",
                             .width = vtepColumn.width,
                             .headerWidth = vtepsPerLine * (vtepColumn.width + 1) - 1};

constexpr TextTable advertisedUnicastTable{vniColumn, macColumn, vtepColumn, movesColumn};
constexpr TextTable advertisedFloodTable{vniColumn, macColumn, vtepsColumn};

/// The columns to the left of the VTEPs.
constexpr TextTable entryTable{vniColumn, macColumn};
constexpr Line nextVtep = Line().add(" ").add(cellFormat(vtepsColumn));

/// Continuation lines are indented by the width of the header, which puts their VTEPs two to
/// the right of those on the first line.
constexpr Line nextLine = Line().add("\n").add(' ', entryTable.width);

/// Prints one entry. An entry without VTEPs still takes a line.
template <class VtepIps>
void printVtepLines(outfmt::Printer & printer, Vex::String const & vni, Nolt::EthAddr const & mac,
                    VtepIps const & vteps) {
    printer.addFrills(entryTable.cells, vni, DisplayMac(mac));
    unsigned printed = 0;
    for (Nolt::IpAddr vtep : vteps) {
        if (printed > 0 && printed % vtepsPerLine == 0) {
            printer.addFrills(nextLine);
        }
        printer.addFrills(nextVtep, vtep);
        ++printed;
    }
    printer.addFrills("\n");
}

} // namespace

void printFdbHeader(outfmt::Printer & printer, char const * title, bool flood) {
    // Each section has a rule as wide as the columns of the other section, and the titles are
    // indented three more than those of the received tables. Scripts recognise the sections by
    // these lines.
    TextTable const & table = flood ? advertisedFloodTable : advertisedUnicastTable;
    TextTable const & other = flood ? advertisedUnicastTable : advertisedFloodTable;
    printer.addFrills("            %s\n", title);
    printer.addFrills("%s\n\n", other.rule);
    printer.addFrills("%s\n", table.titles);
    printer.addFrills("%s\n", table.underline);
}

void printFdbUcastTable(outfmt::Printer & printer, Vex::String const & vni,
                        VniStatus const * status, int & counter) {
    for (MacVtep const & entry : status->macVtepTable()) {
        printer.addFrillsUpTo(maxRowLength, advertisedUnicastTable.row, vni,
                              DisplayMac(entry.macAddr()), entry.vtepIp(),
                              signedCount(entry.moveCount()));
        ++counter;
    }
}

void printFdbBumTable(outfmt::Printer & printer, Vex::String const & vni, VniStatus const * status,
                      int & counter) {
    for (MacVtepMultiPath const & entry : status->macVtepMultiPathTable()) {
        printVtepLines(printer, vni, entry.macAddr(), entry.vtepIpList());
        ++counter;
    }
    for (MacVtepFloodList const & entry : status->macVtepFloodListTable()) {
        if (!status->macVtepMultiPathTableHas(entry.macAddr())) {
            printVtepLines(printer, vni, entry.macAddr(), entry.vtepIpFloodList());
            ++counter;
        }
    }
}

void printFdbTable(outfmt::Printer & printer, Vex::String const & kind, bool dotted,
                   Vex::Ptr<VniStatusList const> const & vnis) {
    int counter = 0;
    bool const unicast = kind == unicastRows;
    bool const flood = kind == floodRows;
    if (vnis) {
        for (VniStatus const & status : vnis->vniEntry()) {
            auto const vni = status.vni().stringValue(dotted);
            if (unicast) {
                printFdbUcastTable(printer, vni, &status, counter);
            } else if (flood) {
                printFdbBumTable(printer, vni, &status, counter);
            } else {
                Vex::assertThat(false, "0");
            }
        }
    }
    printer.addFrills("Total Mac Addresses for this criterion: %d\n", counter);
}

void printFdbText(outfmt::Printer & printer, bool dotted,
                  Vex::Ptr<VniStatusList const> const & vnis) {
    printFdbHeader(printer, "Advertised Mac Address Table", false);
    printFdbTable(printer, unicastRows, dotted, vnis);
    printer.addFrills("\n");
    printFdbHeader(printer, "Advertised Flood Table", true);
    printFdbTable(printer, floodRows, dotted, vnis);
}

} // namespace VxlanController::Cli
