#include "VxlanController/mac/ReceivedText.h"

#include "VxlanController/mac/Columns.h"
#include "VxlanController/mac/Row.h"

namespace VxlanController::Cli {

namespace {

constexpr Column sourceColumn{.title = "Source", .width = 17};

/// In the header this column reaches as far as the unicast table does; in rows it does not.
constexpr Column floodVtepColumn =
    vtepColumn.withHeaderWidth(vtepColumn.width + 1 + movesColumn.width);

constexpr TextTable receivedUnicastTable{sourceColumn, vniColumn, macColumn, vtepColumn,
                                         movesColumn};
constexpr TextTable receivedFloodTable{sourceColumn, vniColumn, macColumn, floodVtepColumn};

void printSectionHeader(outfmt::Printer & printer, char const * title, TextTable const & table) {
    printer.addFrills("         %s\n%s\n\n", title, table.rule);
    printer.addFrills("%s\n%s\n", table.titles, table.underline);
}

/// Prints one row per MAC.
void printUcastTable(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                     VniStatus const & status, int & counter) {
    for (MacVtep const & entry : status.macVtepTable()) {
        printer.addFrillsUpTo(maxRowLength, receivedUnicastTable.row, source, vni,
                              DisplayMac(entry.macAddr()), entry.vtepIp(),
                              signedCount(entry.moveCount()));
        ++counter;
    }
}

template <class VtepIps>
void printVteps(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                Nolt::EthAddr const & mac, VtepIps const & vteps, int & counter) {
    for (Nolt::IpAddr vtep : vteps) {
        printer.addFrillsUpTo(maxRowLength, receivedFloodTable.row, source, vni, DisplayMac(mac),
                              vtep);
        ++counter;
    }
}

/// Prints one row per VTEP, multipath entries first. A MAC in both tables is printed from both.
void printBumTable(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                   VniStatus const & status, int & counter) {
    for (MacVtepMultiPath const & entry : status.macVtepMultiPathTable()) {
        printVteps(printer, source, vni, entry.macAddr(), entry.vtepIpList(), counter);
    }
    for (MacVtepFloodList const & entry : status.macVtepFloodListTable()) {
        printVteps(printer, source, vni, entry.macAddr(), entry.vtepIpFloodList(), counter);
    }
}

void printTable(outfmt::Printer & printer, TableKind kind, bool dotted,
                Vex::Ptr<SwitchDir const> const & sources, int & counter) {
    if (!sources) {
        return;
    }
    auto const printVni = kind == TableKind::ucast ? printUcastTable : printBumTable;
    for (Switch const & source : sources->switchList()) {
        if (auto const vnis = source.vniStatusList()) {
            for (VniStatus const & status : vnis->vniEntry()) {
                printVni(printer, source.switchId(), status.vni().stringValue(dotted), status,
                         counter);
            }
        }
    }
}

void printSection(outfmt::Printer & printer, char const * title, TableKind kind, bool dotted,
                  Vex::Ptr<SwitchDir const> const & switches,
                  Vex::Ptr<SwitchDir const> const & nonSwitchSources) {
    int counter = 0;
    printSectionHeader(printer, title,
                       kind == TableKind::ucast ? receivedUnicastTable : receivedFloodTable);
    printTable(printer, kind, dotted, switches, counter);
    printTable(printer, kind, dotted, nonSwitchSources, counter);
    printer.addFrills("Total Mac Addresses for this criterion: %d\n", counter);
}

} // namespace

void printText(outfmt::Printer & printer, bool dotted, Vex::Ptr<SwitchDir const> const & switches,
               Vex::Ptr<SwitchDir const> const & nonSwitchSources) {
    printSection(printer, "Received Mac Address Table", TableKind::ucast, dotted, switches,
                 nonSwitchSources);
    printer.addFrills("\n");
    printSection(printer, "Received Flood Table", TableKind::bum, dotted, switches,
                 nonSwitchSources);
}

} // namespace VxlanController::Cli
