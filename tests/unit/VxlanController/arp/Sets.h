#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/arp/ArpState.h"

/// Sets of ARP tables as a front end fills them, and what is printed for them.

/// Adds the table of one VNI to `owner`, a set or a switch.
template <class Owner>
void addTable(Owner & owner, char const * vni, std::initializer_list<Binding> bindings) {
    auto const table = owner.arpTableIs(vni);
    for (Binding const & binding : bindings) {
        table->arpEntryIs(Nolt::IpGenAddr::fromString(binding.ip),
                          Nolt::EthAddr::fromString(binding.mac), binding.preference,
                          binding.changes);
    }
}

/// What `print` prints on a printer of `format`.
template <class Print>
std::string printed(Vex::U32 format, Print && print) {
    OutputFile const file;
    outfmt::Printer printer(file.fd(), format, true, false, true, 0);
    print(printer);
    printer.flush();
    return file.content();
}
