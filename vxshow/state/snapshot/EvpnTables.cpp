#include "vxshow/state/snapshot/EvpnTables.h"

#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "vxshow/state/snapshot/Binding.h"
#include "vxshow/state/snapshot/Field.h"
#include "vxshow/text/JsonAddresses.h"

#include <unordered_set>

namespace vxshow::state::snapshot {

namespace {

using VcsEvpn::FloodEntry;
using VcsEvpn::FloodTableWriter;
using VcsEvpn::Host;
using VcsEvpn::HostTableWriter;
using VxlanController::Cli::HostFloodTable;

/// Calls `take(vni, value)` for each VNI. The tables are flat, keyed by VNI and address, so they
/// cannot show that a VNI appears twice in the document.
template <class Take>
void readEachVni(text::JsonValue & value, Take && take) {
    std::unordered_set<Vxlan::Vni> vnis;
    value.members("an object whose members are VNIs",
                  [&](text::JsonText const & key, text::JsonValue & member) {
                      auto const vni = text::readVni(key);
                      text::onlyNew(vnis.insert(vni).second, key);
                      take(vni, member);
                  });
}

Vex::Ptr<VcsEvpn::HostTable const> readHosts(text::JsonValue & value) {
    auto hosts = HostTableWriter::inOwnMemory("EVPN hosts");
    readEachVni(value, [&](Vxlan::Vni vni, text::JsonValue & entries) {
        entries.members(
            text::anObjectByMac, [&](text::JsonText const & key, text::JsonValue & entry) {
                auto const mac = text::readMac(key);
                auto const binding = readBinding(entry);
                text::onlyNew(hosts.insert({mac, vni}, Host(binding.vtep, binding.moves)), key);
            });
    });
    return hosts.table();
}

Vex::Ptr<VcsEvpn::FloodTable const> readFlood(text::JsonValue & value) {
    auto flood = FloodTableWriter::inOwnMemory("EVPN flood lists");
    FloodEntry const replicated(FloodEntry::TunnelType::ingressReplication);
    readEachVni(value, [&](Vxlan::Vni vni, text::JsonValue & list) {
        text::readVteps(list, [&](Nolt::IpAddr vtep) {
            return flood.insert({vni, vtep}, replicated);
        });
    });
    return flood.table();
}

struct HostOfVni {
    Vxlan::Vni vni;
    Nolt::EthAddr mac;
    VcsEvpn::Host host;
};

/// Sorts entries by VNI, then by `key`.
template <class Entry, class Key>
void sortByVni(std::vector<Entry> & entries, Key Entry::*key) {
    std::sort(entries.begin(), entries.end(), [key](Entry const & a, Entry const & b) {
        outfmt::checkInterrupt();
        return a.vni != b.vni ? a.vni < b.vni : a.*key < b.*key;
    });
}

/// Calls `write(vni, first, last)` for the entries of each VNI.
template <class Entry, class Write>
void writeEachVni(std::vector<Entry> const & sorted, Write && write) {
    for (auto first = sorted.begin(); first != sorted.end();) {
        auto const last = std::find_if(
            first, sorted.end(), [&](Entry const & entry) { return entry.vni != first->vni; });
        write(first->vni, first, last);
        first = last;
    }
}

void writeHosts(ValuesWriter & values, VcsEvpn::HostTable const & table) {
    std::vector<HostOfVni> hosts;
    hosts.reserve(table.size());
    for (auto at = table.begin(); at; ++at) {
        outfmt::checkInterrupt();
        auto const key = at.key();
        hosts.push_back({key.vni, key.mac, at.value()});
    }
    sortByVni(hosts, &HostOfVni::mac);
    writeEachVni(hosts, [&](Vxlan::Vni vni, auto at, auto last) {
        values.object(Spelled(vni), [&] {
            for (; at != last; ++at) {
                writeBinding(values, Spelled(at->mac), {at->host.vtepIp(), at->host.moveCount()});
            }
        });
    });
}

void writeFlood(ValuesWriter & values, VcsEvpn::FloodTable const & table) {
    std::vector<VcsEvpn::FloodKey> vteps;
    vteps.reserve(table.size());
    for (auto at = table.begin(); at; ++at) {
        // A dead slot, to which nothing is flooded, would be read back as a live one.
        if (at.value() != VcsEvpn::FloodEntry()) {
            vteps.push_back(at.key());
        }
    }
    sortByVni(vteps, &VcsEvpn::FloodKey::vtepIp);
    writeEachVni(vteps, [&](Vxlan::Vni vni, auto at, auto last) {
        values.list(Spelled(vni), [&] {
            for (; at != last; ++at) {
                values.element(Spelled(at->vtepIp));
            }
        });
    });
}

constexpr auto evpnObject = text::strictObject(
    "an object of \"hosts\" and \"flood\"",
    optionalMember(
        "hosts",
        [](text::JsonValue & value, HostFloodTable & into) { into.hostTableIs(readHosts(value)); },
        [](ValuesWriter & values, std::string_view name, HostFloodTable const & from) {
            if (auto const & hosts = from.hostTable()) {
                values.object(name, [&] { writeHosts(values, *hosts); });
            }
        }),
    optionalMember(
        "flood",
        [](text::JsonValue & value, HostFloodTable & into) { into.floodTableIs(readFlood(value)); },
        [](ValuesWriter & values, std::string_view name, HostFloodTable const & from) {
            if (auto const & flood = from.floodTable()) {
                values.object(name, [&] { writeFlood(values, *flood); });
            }
        }));

} // namespace

Vex::Ptr<HostFloodTable> readEvpn(text::JsonValue & value) {
    auto tables = VxlanController::Cli::hostFloodTableFactory();
    evpnObject.read(value, *tables);
    return tables;
}

void writeEvpn(ValuesWriter & values, HostFloodTable const & tables) {
    writeMembers(evpnObject, values, tables);
}

} // namespace vxshow::state::snapshot
