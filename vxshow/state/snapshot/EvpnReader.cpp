#include "vxshow/state/snapshot/EvpnReader.h"

#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonMembers.h"

#include <array>
#include <unordered_set>

namespace vxshow {

namespace {

using VcsEvpn::FloodEntry;
using VcsEvpn::FloodTableWriter;
using VcsEvpn::Host;
using VcsEvpn::HostTableWriter;

/// The tables are flat, keyed by VNI and address: that a VNI stands in the document once is
/// nothing that they know.
template <class Take>
void eachVni(JsonValue & value, Take && take) {
    std::unordered_set<Vxlan::Vni> vnis;
    value.members("an object whose members are VNIs",
                  [&](JsonText const & key, JsonValue & member) {
                      auto const vni = readVni(key);
                      onlyNew(vnis.insert(vni).second, key);
                      take(vni, member);
                  });
}

Vex::Ptr<VcsEvpn::HostTable const> readHosts(JsonValue & value) {
    HostTableWriter hosts("EVPN hosts");
    eachVni(value, [&](Vxlan::Vni vni, JsonValue & entries) {
        entries.members(anObjectByMac, [&](JsonText const & key, JsonValue & entry) {
            auto const mac = readMac(key);
            auto const binding = readBinding(entry);
            onlyNew(hosts.insert({mac, vni}, Host(binding.vtep, binding.moves)), key);
        });
    });
    return hosts.table();
}

Vex::Ptr<VcsEvpn::FloodTable const> readFlood(JsonValue & value) {
    FloodTableWriter flood("EVPN flood lists");
    FloodEntry const replicated(FloodEntry::TunnelType::ingressReplication);
    eachVni(value, [&](Vxlan::Vni vni, JsonValue & list) {
        readVteps(list, [&](Nolt::IpAddr vtep) { return flood.insert({vni, vtep}, replicated); });
    });
    return flood.table();
}

} // namespace

Vex::Ptr<VxlanController::Cli::HostFloodTable> readEvpn(JsonValue & value) {
    constexpr std::size_t hosts = 0;
    static constexpr std::array<MemberName, 2> names{"hosts", "flood"};
    Members members(names);
    auto tables = VxlanController::Cli::hostFloodTableFactory();
    value.members("an object of \"hosts\" and \"flood\"",
                  [&](JsonText const & name, JsonValue & table) {
                      if (members.take(name) == hosts) {
                          tables->hostTableIs(readHosts(table));
                      } else {
                          tables->floodTableIs(readFlood(table));
                      }
                  });
    return tables;
}

} // namespace vxshow
