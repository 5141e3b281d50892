#include "vxshow/state/snapshot/EvpnWriter.h"

#include "state/FloodTable.h"
#include "state/HostTable.h"

namespace vxshow::state::snapshot {

namespace {

struct HostOfVni {
    Vxlan::Vni vni;
    Nolt::EthAddr mac;
    VcsEvpn::Host host;
};

/// The entries in the order of their VNI, and within it of `key`.
template <class Entry, class Key>
void sortByVni(std::vector<Entry> & entries, Key Entry::*key) {
    std::sort(entries.begin(), entries.end(), [key](Entry const & a, Entry const & b) {
        outfmt::checkInterrupt();
        return a.vni != b.vni ? a.vni < b.vni : a.*key < b.*key;
    });
}

/// Calls `write(vni, first, last)` for the entries of each VNI.
template <class Entry, class Write>
void eachVni(std::vector<Entry> const & sorted, Write && write) {
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
    eachVni(hosts, [&](Vxlan::Vni vni, auto at, auto last) {
        values.object(Spelled(vni), [&] {
            for (; at != last; ++at) {
                values.binding(at->mac, at->host.vtepIp(), at->host.moveCount());
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
    eachVni(vteps, [&](Vxlan::Vni vni, auto at, auto last) {
        values.list(Spelled(vni), [&] {
            for (; at != last; ++at) {
                values.element(Spelled(at->vtepIp));
            }
        });
    });
}

} // namespace

void writeEvpn(ValuesWriter & values, VxlanController::Cli::HostFloodTable const & tables) {
    if (auto const & hosts = tables.hostTable()) {
        values.object("hosts", [&] { writeHosts(values, *hosts); });
    }
    if (auto const & flood = tables.floodTable()) {
        values.object("flood", [&] { writeFlood(values, *flood); });
    }
}

} // namespace vxshow::state::snapshot
