#include "VxlanController/mac/ReceivedText.h"

#include "VxlanController/mac/Row.h"

namespace VxlanController::Cli {

namespace {

void printHeader(outfmt::Printer & printer, char const * title, bool flood) {
    printer.addFrills("         %s\n", title);
    printer.addFrills("%s\n\n",
                      "---------------------------------------------------------------------");
    if (flood) {
        printer.addFrills("%s\n", "Source            VNI         Mac Address       VTEP");
        printer.addFrills("%s\n", "----------------- ----------- ----------------- "
                                  "---------------------");
    } else {
        printer.addFrills("%s\n", "Source            VNI         Mac Address       VTEP"
                                  "            Moves");
        printer.addFrills("%s\n", "----------------- ----------- ----------------- "
                                  "--------------- -----");
    }
}

/// One row a MAC. The MAC column is two narrower than its header: scripts cut the rows by
/// these widths.
void printUcastTable(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                     VniStatus const & status, int & counter) {
    for (MacVtep const & entry : status.macVtepTable()) {
        printer.addFrillsUpTo(maxRowLength, "%-17s %-11s %-15s %-15s %5d\n", source, vni,
                              DisplayMac(entry.macAddr()), entry.vtepIp(),
                              signedCount(entry.moveCount()));
        ++counter;
    }
}

template <class VtepIps>
void printVteps(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                Nolt::EthAddr const & mac, VtepIps const & vteps, int & counter) {
    for (Nolt::IpAddr vtep : vteps) {
        printer.addFrillsUpTo(maxRowLength, "%-17s %-11s %-15s %-15s\n", source, vni,
                              DisplayMac(mac), vtep);
        ++counter;
    }
}

/// One row a VTEP, multipath entries first. A MAC in both tables is printed from both.
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
    printHeader(printer, title, kind == TableKind::bum);
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
