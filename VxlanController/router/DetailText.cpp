#include "VxlanController/router/DetailText.h"

#include "VxlanController/command/CliTrace.h"
#include "VxlanController/router/NameColumn.h"
#include "VxlanController/router/TableParts.h"

#include <string>

namespace VxlanController::Cli {

namespace {

constexpr int portsPerRow = 2;

void printIpPorts(outfmt::Printer & printer, VcsLR const & command) {
    printer.addFrills("%s\n", rule);
    printer.addFrills("%-49.49s %-18.18s %-11.11s\n", "Name", "IP Address", "VNI");
    printer.addFrills("%s\n", rule);
    std::size_t entries = 0;
    for (LRDetail const & router : command.lRDetail()) {
        NameColumn name(router.lRName());
        entries += router.ipPort().size();
        for (LRIpPortV2 const & port : router.ipPort()) {
            printer.addFrills("%-49.49s %-18.18s %-11.11s\n", name.next(), port.ip(),
                              port.vni().stringValue(command.vniDotted()));
        }
    }
    printTotal(printer, entries);
}

/// The rows of one uplink port; without physical ports it has none. A full row ends with the
/// comma that leads to the next one.
void printUplinkPort(outfmt::Printer & printer, NameColumn & name,
                     LRIpUplinkPortAddress const & uplink) {
    std::string ports;
    int row = 0;
    auto const printRow = [&] {
        if (row++ == 0) {
            printer.addFrills("%-11.11s %-18.18s %-17.17s %-4.4s %-30.30s\n", name.next(),
                              uplink.ip(), uplink.switchId(), uplink.vlanId(), ports);
        } else {
            printer.addFrills("%-11.11s %-18.18s %-17.17s %-4.4s %-30.30s\n", name.next(), "", "",
                              "", ports);
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
    printer.addFrills("Uplink ports:\n%s\n", rule);
    printer.addFrills("%-11.11s %-18.18s %-17.17s %-4.4s %-30.30s\n", "Name", "IP Address",
                      "Switch", "Vlan", "Ports");
    printer.addFrills("%s\n", rule);
    std::size_t entries = 0;
    for (LRDetail const & router : command.lRDetail()) {
        NameColumn name(router.lRName());
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
