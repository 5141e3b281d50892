#include "vxshow/state/snapshot/EvpnReader.h"

#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonMembers.h"

#include <array>
#include <unordered_set>

namespace vxshow::state::snapshot {

namespace {

using VcsEvpn::FloodEntry;
using VcsEvpn::FloodTableWriter;
using VcsEvpn::Host;
using VcsEvpn::HostTableWriter;

/// The tables are flat, keyed by VNI and address: that a VNI stands in the document once is
/// nothing that they know.
template <class Take>
void eachVni(text::JsonValue & value, Take && take) {
    std::unordered_set<Vxlan::Vni> vnis;
    value.members("an object whose members are VNIs",
                  [&](text::JsonText const & key, text::JsonValue & member) {
                      auto const vni = text::readVni(key);
                      text::onlyNew(vnis.insert(vni).second, key);
                      take(vni, member);
                  });
}

Vex::Ptr<VcsEvpn::HostTable const> readHosts(text::JsonValue & value) {
    HostTableWriter hosts("EVPN hosts");
    eachVni(value, [&](Vxlan::Vni vni, text::JsonValue & entries) {
        entries.members(
            text::anObjectByMac, [&](text::JsonText const & key, text::JsonValue & entry) {
                auto const mac = text::readMac(key);
                auto const binding = text::readBinding(entry);
                text::onlyNew(hosts.insert({mac, vni}, Host(binding.vtep, binding.moves)), key);
            });
    });
    return hosts.table();
}

Vex::Ptr<VcsEvpn::FloodTable const> readFlood(text::JsonValue & value) {
    FloodTableWriter flood("EVPN flood lists");
    FloodEntry const replicated(FloodEntry::TunnelType::ingressReplication);
    eachVni(value, [&](Vxlan::Vni vni, text::JsonValue & list) {
        text::readVteps(list, [&](Nolt::IpAddr vtep) {
            return flood.insert({vni, vtep}, replicated);
        });
    });
    return flood.table();
}

} // namespace

Vex::Ptr<VxlanController::Cli::HostFloodTable> readEvpn(text::JsonValue & value) {
    constexpr std::size_t hosts = 0;
    static constexpr std::array<text::MemberName, 2> names{"hosts", "flood"};
    text::Members members(names);
    auto tables = VxlanController::Cli::hostFloodTableFactory();
    value.members("an object of \"hosts\" and \"flood\"",
                  [&](text::JsonText const & name, text::JsonValue & table) {
                      if (members.take(name) == hosts) {
                          tables->hostTableIs(readHosts(table));
                      } else {
                          tables->floodTableIs(readFlood(table));
                      }
                  });
    return tables;
}

} // namespace vxshow::state::snapshot
