#include "VxlanController/router/DetailText.h"

#include "VxlanController/command/CliTrace.h"
#include "VxlanController/router/GroupLabel.h"
#include "VxlanController/router/TableParts.h"

#include <string>

namespace VxlanController::Cli {

namespace {

constexpr TextTable ipPortTable{
    {.title = "Name", .width = 49, .cell = Cell::cutText},
    {.title = "IP Address", .width = 18, .cell = Cell::cutText},
    {.title = "VNI", .width = 11, .cell = Cell::cutText},
};

constexpr TextTable uplinkTable{
    {.title = "Name", .width = 11, .cell = Cell::cutText},
    {.title = "IP Address", .width = 18, .cell = Cell::cutText},
    {.title = "Switch", .width = 17, .cell = Cell::cutText},
    {.title = "Vlan", .width = 4, .cell = Cell::cutText},
    {.title = "Ports", .width = 30, .cell = Cell::cutText},
};

constexpr int portsPerRow = 2;

void printIpPorts(outfmt::Printer & printer, VcsLR const & command) {
    printHeader(printer, ipPortTable, ipPortTable.rule);
    std::size_t entries = 0;
    for (LRDetail const & router : command.lRDetail()) {
        GroupLabel name(router.lRName());
        entries += router.ipPort().size();
        for (LRIpPortV2 const & port : router.ipPort()) {
            printer.addFrills(ipPortTable.row, name.forNextRow(), port.ip(),
                              port.vni().stringValue(command.vniDotted()));
        }
    }
    printTotal(printer, entries);
}

/// Prints the rows of one uplink port; without physical ports it has none. A row that is
/// continued on the next one ends in a comma.
void printUplinkPort(outfmt::Printer & printer, GroupLabel & name,
                     LRIpUplinkPortAddress const & uplink) {
    std::string ports;
    int row = 0;
    auto const printRow = [&] {
        if (row++ == 0) {
            printer.addFrills(uplinkTable.row, name.forNextRow(), uplink.ip(), uplink.switchId(),
                              uplink.vlanId(), ports);
        } else {
            printer.addFrills(uplinkTable.row, name.forNextRow(), "", "", "", ports);
        }
        ports.clear();
    };
    std::size_t left = uplink.port().size();
    int inRow = 0;
    for (Vex::String const & port : uplink.port()) {
        ports += port;
        if (--left != 0) {
            ports += ", ";
        }
        if (++inRow == portsPerRow) {
            printRow();
            inRow = 0;
        }
    }
    if (inRow != 0) {
        printRow();
    }
}

void printUplinkPorts(outfmt::Printer & printer, VcsLR const & command) {
    printer.addFrills("Uplink ports:\n");
    // The rule is that of the IP ports, although these columns are four wider.
    printHeader(printer, uplinkTable, ipPortTable.rule);
    std::size_t entries = 0;
    for (LRDetail const & router : command.lRDetail()) {
        GroupLabel name(router.lRName());
        entries += router.ipUplinkPort().size();
        for (LRIpUplinkPortAddress const & uplink : router.ipUplinkPort()) {
            printUplinkPort(printer, name, uplink);
        }
    }
    printTotal(printer, entries);
}

} // namespace

void renderLRText(outfmt::Printer & printer, VcsLR const * vcsLR) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::renderLRText(outfmt::Printer&, "
                  "const VxlanController::Cli::VcsLR*)";
    }
    printIpPorts(printer, *vcsLR);
    printUplinkPorts(printer, *vcsLR);
}

} // namespace VxlanController::Cli
