#include "VxlanController/mac/AdvertisedText.h"

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

void printFdbHeader(outfmt::Printer & printer, char const * title, Line const & rule,
                    TextTable const & table) {
    printer.addFrills("            %s\n%s\n\n", title, rule);
    printer.addFrills("%s\n%s\n", table.titles, table.underline);
}

void printFdbUcastTable(outfmt::Printer & printer, Vex::String const & vni,
                        VniStatus const & status, int & counter) {
    for (MacVtep const & entry : status.macVtepTable()) {
        printer.addFrillsUpTo(maxRowLength, advertisedUnicastTable.row, vni,
                              DisplayMac(entry.macAddr()), entry.vtepIp(),
                              signedCount(entry.moveCount()));
        ++counter;
    }
}

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

/// Prints multipath entries first. A MAC that has one is not printed again from the flood
/// lists, unlike in the received table.
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
    // Each section has a rule as wide as the columns of the other section, and the titles are
    // indented three more than those of the received tables. Scripts recognise the sections by
    // these lines.
    printFdbHeader(printer, "Advertised Mac Address Table", advertisedFloodTable.rule,
                   advertisedUnicastTable);
    printFdbTable(printer, TableKind::ucast, dotted, vnis);
    printer.addFrills("\n");
    printFdbHeader(printer, "Advertised Flood Table", advertisedUnicastTable.rule,
                   advertisedFloodTable);
    printFdbTable(printer, TableKind::bum, dotted, vnis);
}

} // namespace VxlanController::Cli
