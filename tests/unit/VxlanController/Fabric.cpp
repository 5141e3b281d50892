#include "tests/unit/VxlanController/Fabric.h"

#include "tests/unit/VxlanController/Rendered.h"

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

void addUnicast(VniTables & tables, char const * mac, char const * vtep, Vex::U32 moves) {
    tables.macVtepIs(MacVtepV2(EthAddr::fromString(mac), IpAddr::fromString(vtep), moves));
}

void addMultipath(VniTables & tables, char const * mac, std::initializer_list<char const *> vteps) {
    MacVtepMultiPathV2 entry(EthAddr::fromString(mac));
    for (char const * vtep : vteps) {
        entry.vtepIpIs(IpAddr::fromString(vtep), true);
    }
    tables.macVtepMultiPathIs(entry);
}

void addFlood(VniTables & tables, char const * mac, std::initializer_list<char const *> vteps) {
    auto const list = Vex::makePtr<MacVtepFloodListV2>(EthAddr::fromString(mac));
    for (char const * vtep : vteps) {
        list->vtepIpIs(IpAddr::fromString(vtep), true);
    }
    tables.macVtepFloodListIs(list);
}

void Evpn::host(Vex::U32 vni, char const * mac, char const * vtep, Vex::U32 moves) {
    hosts.insert({EthAddr::fromString(mac), Vni(vni)},
                 VcsEvpn::Host(IpAddr::fromString(vtep), moves));
    publish();
}

void Evpn::floodVtep(Vex::U32 vni, char const * vtep) {
    using VcsEvpn::FloodEntry;
    floodVteps.insert({Vni(vni), IpAddr::fromString(vtep)},
                      FloodEntry(FloodEntry::TunnelType::ingressReplication));
    publish();
}

void Evpn::publish() {
    auto const tables = Cli::hostFloodTableFactory();
    tables->hostTableIs(hosts.table());
    tables->floodTableIs(floodVteps.table());
    list->hostFloodTableIs("EVPN", tables);
}

Fabric & Fabric::unicast(char const * source, Vex::U32 vni, char const * mac, char const * vtep,
                         Vex::U32 moves) {
    addUnicast(*dirOf(source).vniStatusV2Is(Vni(vni)), mac, vtep, moves);
    return *this;
}

Fabric & Fabric::multipath(char const * source, Vex::U32 vni, char const * mac,
                           std::initializer_list<char const *> vteps) {
    addMultipath(*dirOf(source).vniStatusV2Is(Vni(vni)), mac, vteps);
    return *this;
}

Fabric & Fabric::flood(char const * source, Vex::U32 vni, char const * mac,
                       std::initializer_list<char const *> vteps) {
    addFlood(*dirOf(source).vniStatusV2Is(Vni(vni)), mac, vteps);
    return *this;
}

Fabric & Fabric::host(Vex::U32 vni, char const * mac, char const * vtep, Vex::U32 moves) {
    evpn.host(vni, mac, vtep, moves);
    return *this;
}

Fabric & Fabric::floodVtep(Vex::U32 vni, char const * vtep) {
    evpn.floodVtep(vni, vtep);
    return *this;
}

Vex::Ptr<Cli::VtepList> vtepListOf(MacFilter const & filter) {
    auto const vteps = Cli::vtepListFactory();
    for (auto const & [ip, shown] : filter.vteps) {
        vteps->vtepIs(IpAddr::fromString(ip), shown);
    }
    return vteps;
}

EthAddr macOf(MacFilter const & filter) {
    return filter.mac.empty() ? EthAddr() : EthAddr::fromString(filter.mac);
}

Vex::Ptr<Cli::VcsVniReceived> receivedCommand(Fabric const & fabric, MacFilter const & filter) {
    return Cli::vcsVniReceivedFactory(fabric.switches, fabric.sources, fabric.evpn.list,
                                      filter.dotted, filter.vni, macOf(filter), filter.source,
                                      vtepListOf(filter));
}

std::string receivedText(Fabric const & fabric, MacFilter const & filter) {
    return rendered(receivedCommand(fabric, filter));
}

std::string receivedJson(Fabric const & fabric, MacFilter const & filter, Vex::U32 revision) {
    return rendered(receivedCommand(fabric, filter), jsonFormat, revision);
}

std::string sectionRows(std::string const & text, std::string const & title) {
    auto const nextLine = [&](std::size_t at) { return text.find('\n', at) + 1; };
    std::size_t const titles = text.find("\n\n", text.find(title)) + 2;
    std::size_t const start = nextLine(nextLine(titles));
    return text.substr(start, nextLine(text.find("Total Mac", start)) - start);
}
