#include "tests/VxlanController/Fabric.h"

#include "tests/VxlanController/Rendered.h"

using namespace VxlanController;
using Nolt::EthAddr;
using Nolt::IpAddr;
using Vxlan::Vni;

VniStatusDirV2 & Fabric::dirOf(std::string const & source) {
    for (auto const & [name, dir] : dirs_) {
        if (name == source) {
            return *dir;
        }
    }
    auto const dir = Vex::makePtr<VniStatusDirV2>();
    dirs_.emplace_back(source, dir);
    if (source == "HSC" || source == "QVX") {
        sources->vniStatusDirIs(source, dir);
    } else {
        switches->entityIs(source, dir);
    }
    return *dir;
}

Fabric & Fabric::source(char const * name) {
    dirOf(name);
    return *this;
}

Fabric & Fabric::unicast(char const * source, Vex::U32 vni, char const * mac, char const * vtep,
                         Vex::U32 moves) {
    dirOf(source).vniStatusV2Is(Vni(vni))->macVtepIs(
        MacVtepV2(EthAddr::fromString(mac), IpAddr::fromString(vtep), moves));
    return *this;
}

Fabric & Fabric::multipath(char const * source, Vex::U32 vni, char const * mac,
                           std::initializer_list<char const *> vteps) {
    MacVtepMultiPathV2 entry(EthAddr::fromString(mac));
    for (char const * vtep : vteps) {
        entry.vtepIpIs(IpAddr::fromString(vtep), true);
    }
    dirOf(source).vniStatusV2Is(Vni(vni))->macVtepMultiPathIs(entry);
    return *this;
}

Fabric & Fabric::flood(char const * source, Vex::U32 vni, char const * mac,
                       std::initializer_list<char const *> vteps) {
    auto const list = Vex::makePtr<MacVtepFloodListV2>(EthAddr::fromString(mac));
    for (char const * vtep : vteps) {
        list->vtepIpIs(IpAddr::fromString(vtep), true);
    }
    dirOf(source).vniStatusV2Is(Vni(vni))->macVtepFloodListIs(list);
    return *this;
}

Fabric & Fabric::host(Vex::U32 vni, char const * mac, char const * vtep, Vex::U32 moves) {
    hosts.insert({EthAddr::fromString(mac), Vni(vni)},
                 VcsEvpn::Host(IpAddr::fromString(vtep), moves));
    return withEvpn();
}

Fabric & Fabric::floodVtep(Vex::U32 vni, char const * vtep) {
    using VcsEvpn::FloodEntry;
    floodVteps.insert({Vni(vni), IpAddr::fromString(vtep)},
                      FloodEntry(FloodEntry::TunnelType::ingressReplication));
    return withEvpn();
}

Fabric & Fabric::withEvpn() {
    auto const tables = Cli::hostFloodTableFactory();
    tables->hostTableIs(hosts.table());
    tables->floodTableIs(floodVteps.table());
    evpn->hostFloodTableIs("EVPN", tables);
    return *this;
}

Vex::Ptr<Cli::VcsVniReceived> receivedCommand(Fabric const & fabric,
                                              ReceivedFilter const & filter) {
    auto const vteps = Cli::vtepListFactory();
    for (auto const & [ip, shown] : filter.vteps) {
        vteps->vtepIs(IpAddr::fromString(ip), shown);
    }
    return Cli::vcsVniReceivedFactory(
        fabric.switches, fabric.sources, fabric.evpn, filter.dotted, filter.vni,
        filter.mac.empty() ? EthAddr() : EthAddr::fromString(filter.mac), filter.source, vteps);
}

std::string receivedText(Fabric const & fabric, ReceivedFilter const & filter) {
    return rendered(receivedCommand(fabric, filter));
}

std::string receivedJson(Fabric const & fabric, ReceivedFilter const & filter, Vex::U32 revision) {
    return rendered(receivedCommand(fabric, filter), jsonFormat, revision);
}
