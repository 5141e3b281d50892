#include "tests/unit/VxlanController/arp/ArpState.h"

#include "tests/unit/VxlanController/Rendered.h"

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

/// The entity under `name`, made when it is not there. The directory shares its entities as
/// constants; the one who mounts them may still write.
template <class T>
T & entityOf(Vex::Dir & directory, std::string const & name) {
    if (!directory.entityPtr(name)) {
        directory.entityIs(name, Vex::makePtr<T>());
    }
    return const_cast<T &>(dynamic_cast<T const &>(*directory.entityPtr(name)));
}

std::string table(char const * header, std::string const & rows, int total) {
    return header + rows + "\nTotal IP addresses for this criterion: " + std::to_string(total) +
           "\n";
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
    return table("                       Advertised ARP Table\n"
                 "-------------------------------------------------------------------------\n"
                 "VNI      IP Address      MAC Address        Changes\n"
                 "-------- --------------- ------------------ --------\n",
                 rows, total);
}

std::string receivedTable(std::string const & rows, int total) {
    return table("                        Received ARP Table\n"
                 "-------------------------------------------------------------------------\n"
                 "Switch              VNI      IP Address      MAC Address        Changes\n"
                 "------------------- -------- --------------- ------------------ ---------\n",
                 rows, total);
}
