#include "VxlanController/mac/ReceivedText.h"

#include "Vex/Assert.h"
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

template <class VtepIps>
void printVteps(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                Nolt::EthAddr const & mac, VtepIps const & vteps, int & counter) {
    for (Nolt::IpAddr vtep : vteps) {
        printer.addFrillsUpTo(maxRowLength, receivedFloodTable.row, source, vni, DisplayMac(mac),
                              vtep);
        ++counter;
    }
}

} // namespace

void printHeader(outfmt::Printer & printer, char const * title, bool flood) {
    TextTable const & table = flood ? receivedFloodTable : receivedUnicastTable;
    printer.addFrills("         %s\n", title);
    printer.addFrills("%s\n\n", table.rule);
    printer.addFrills("%s\n", table.titles);
    printer.addFrills("%s\n", table.underline);
}

void printUcastTable(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                     VniStatus const * status, int & counter) {
    for (MacVtep const & entry : status->macVtepTable()) {
        printer.addFrillsUpTo(maxRowLength, receivedUnicastTable.row, source, vni,
                              DisplayMac(entry.macAddr()), entry.vtepIp(),
                              signedCount(entry.moveCount()));
        ++counter;
    }
}

void printBumTable(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                   VniStatus const * status, int & counter) {
    for (MacVtepMultiPath const & entry : status->macVtepMultiPathTable()) {
        printVteps(printer, source, vni, entry.macAddr(), entry.vtepIpList(), counter);
    }
    for (MacVtepFloodList const & entry : status->macVtepFloodListTable()) {
        printVteps(printer, source, vni, entry.macAddr(), entry.vtepIpFloodList(), counter);
    }
}

void printTable(outfmt::Printer & printer, Vex::String const & kind, bool dotted,
                Vex::Ptr<SwitchDir const> const & sources, int & counter) {
    if (!sources) {
        return;
    }
    bool const unicast = kind == unicastRows;
    bool const flood = kind == floodRows;
    for (Switch const & source : sources->switchList()) {
        if (auto const vnis = source.vniStatusList()) {
            for (VniStatus const & status : vnis->vniEntry()) {
                auto const vni = status.vni().stringValue(dotted);
                if (unicast) {
                    printUcastTable(printer, source.switchId(), vni, &status, counter);
                } else if (flood) {
                    printBumTable(printer, source.switchId(), vni, &status, counter);
                } else {
                    Vex::assertThat(false, "0");
                }
            }
        }
    }
}

void printText(outfmt::Printer & printer, bool dotted, Vex::Ptr<SwitchDir const> const & switches,
               Vex::Ptr<SwitchDir const> const & nonSwitchSources) {
    int counter = 0;
    printHeader(printer, "Received Mac Address Table", false);
    printTable(printer, unicastRows, dotted, switches, counter);
    printTable(printer, unicastRows, dotted, nonSwitchSources, counter);
    printer.addFrills("Total Mac Addresses for this criterion: %d\n", counter);
    printer.addFrills("\n");

    counter = 0;
    printHeader(printer, "Received Flood Table", true);
    printTable(printer, floodRows, dotted, switches, counter);
    printTable(printer, floodRows, dotted, nonSwitchSources, counter);
    printer.addFrills("Total Mac Addresses for this criterion: %d\n", counter);
}

} // namespace VxlanController::Cli
