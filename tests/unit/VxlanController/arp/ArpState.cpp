#include "tests/unit/VxlanController/arp/ArpState.h"

#include "VxlanController/arp/SetOutput.h"
#include "tests/unit/VxlanController/arp/Sets.h"

using namespace VxlanController;
using Nolt::EthAddr;
using Nolt::IpGenAddr;

namespace {

void add(VniTables & status, std::initializer_list<Binding> bindings) {
    for (Binding const & binding : bindings) {
        status.arpIs(ArpEntryV2(IpGenAddr::fromString(binding.ip), EthAddr::fromString(binding.mac),
                                binding.preference, binding.changes));
    }
}

/// The entity under `name`, created if absent. The directory returns its entities as const, but
/// the test that owns them can write to them.
template <class T>
T & entityOf(Vex::Dir & directory, std::string const & name) {
    if (!directory.entityPtr(name)) {
        directory.entityIs(name, Vex::makePtr<T>());
    }
    return const_cast<T &>(dynamic_cast<T const &>(*directory.entityPtr(name)));
}

/// The listing with these rows under the header of `emptyListing`. The bytes of that header are
/// checked by the golden test of the set functions.
std::string listing(std::string const & emptyListing, std::string const & rows, int total) {
    return emptyListing.substr(0, emptyListing.find("\nTotal")) + rows +
           "\nTotal IP addresses for this criterion: " + std::to_string(total) + "\n";
}

} // namespace

ArpState & ArpState::advertised(std::string const & name, std::initializer_list<Binding> bindings) {
    add(entityOf<VniFdbStatusV2>(*vnis, name), bindings);
    return *this;
}

ArpState & ArpState::received(std::string const & switchId, Vex::U32 vni,
                              std::initializer_list<Binding> bindings) {
    add(*entityOf<VniStatusDirV2>(*switches, switchId).vniStatusV2Is(Vxlan::Vni(vni)), bindings);
    return *this;
}

ArpState & ArpState::switchOnly(std::string const & switchId) {
    entityOf<VniStatusDirV2>(*switches, switchId);
    return *this;
}

void addMany(VniTables & status, Vex::U32 count) {
    for (Vex::U32 i = 0; i < count; ++i) {
        status.arpIs(ArpEntryV2(Nolt::IpAddr(0x0A000000 + i), EthAddr(), 0, 0));
    }
}

Vex::Ptr<Cli::ArpAdvertised> advertisedCommand(ArpState const & state, ArpFilters const & filters) {
    return Cli::arpAdvertisedFactory(state.vnis, filters.dotted, filters.vni,
                                     EthAddr::fromString(filters.mac),
                                     IpGenAddr::fromString(filters.ip));
}

Vex::Ptr<Cli::ArpReceived> receivedCommand(ArpState const & state, ArpFilters const & filters) {
    return Cli::arpReceivedFactory(state.switches, filters.dotted, filters.vni,
                                   EthAddr::fromString(filters.mac),
                                   IpGenAddr::fromString(filters.ip), filters.switchId);
}

std::string advertisedText(ArpState const & state, ArpFilters const & filters) {
    return rendered(advertisedCommand(state, filters));
}

std::string advertisedJson(ArpState const & state, ArpFilters const & filters) {
    return rendered(advertisedCommand(state, filters), jsonFormat);
}

std::string receivedText(ArpState const & state, ArpFilters const & filters) {
    return rendered(receivedCommand(state, filters));
}

std::string receivedJson(ArpState const & state, ArpFilters const & filters) {
    return rendered(receivedCommand(state, filters), jsonFormat);
}

std::string advertisedTable(std::string const & rows, int total) {
    return listing(printed(textFormat,
                           [](outfmt::Printer & printer) {
                               Cli::renderVxlanFdbSetText(printer, Cli::vxlanFdbSetFactory());
                           }),
                   rows, total);
}

std::string receivedTable(std::string const & rows, int total) {
    return listing(printed(textFormat,
                           [](outfmt::Printer & printer) {
                               Cli::renderVxlanVtepSetText(printer, Cli::vxlanVtepSetFactory());
                           }),
                   rows, total);
}
