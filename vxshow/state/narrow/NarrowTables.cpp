#include "vxshow/state/narrow/NarrowTables.h"

#include "Pelo/Errors.h"
#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"

namespace vxshow::state::narrow {

namespace {

namespace Cli = VxlanController::Cli;

using VxlanController::ArpEntryV2;
using VxlanController::VniFdbStatusV2;
using VxlanController::VniStatusDirV2;
using VxlanController::VniStatusV2;
using VxlanController::VniTables;

template <class Value>
bool keeps(Intervals<Value> const & set, Value const & value) {
    return set.empty() || set.contains(value);
}

/// The entries of `table` for which `keep` holds, as `Vex::FlatHashMap::fill` takes them.
template <class Table, class Keep>
std::vector<typename Table::Slot> kept(Table const & table, Keep && keep) {
    std::vector<typename Table::Slot> entries;
    for (auto const & entry : table) {
        if (keep(entry)) {
            entries.emplace_back(entry);
        }
    }
    return entries;
}

/// Fills `into`, which is empty, with what the filter keeps of `from`, one VNI's tables.
void copyKept(VniTables const & from, TableFilter const & filter, VniTables & into) {
    auto const ofMac = [&](auto const & entry) { return keeps(filter.macs, entry.macAddr()); };
    auto unicast = kept(from.macVtepTable(), ofMac);
    into.macVtepTableIs(unicast);
    auto multipath = kept(from.macVtepMultiPathTable(), ofMac);
    into.macVtepMultiPathTableIs(multipath);
    for (auto const & list : from.macVtepFloodListTable()) {
        if (ofMac(list)) {
            // The table under the list's own address gives the entity that can be shared.
            into.macVtepFloodListIs(from.macVtepFloodListTable(list.macAddr()));
        }
    }
    auto bindings = kept(from.arpTable(), [&](ArpEntryV2 const & entry) {
        return keeps(filter.macs, entry.macAddress()) && keeps(filter.ips, entry.ipAddress());
    });
    into.arpTableIs(bindings);
}

Vex::Ptr<VniStatusDirV2 const> narrowed(Vex::Ptr<VniStatusDirV2 const> const & source,
                                        TableFilter const & filter) {
    if (filter.keepsAll()) {
        return source;
    }
    auto result = Vex::makePtr<VniStatusDirV2>();
    for (VniStatusV2 const & status : source->vniStatusV2()) {
        if (keeps(filter.vnis, status.vni())) {
            copyKept(status, filter, *result->vniStatusV2Is(status.vni()));
        }
    }
    return result;
}

/// Calls `visit(key, value)` for each entry of a shared table. Damage is reported to the table's
/// own handler and ends the walk, as in the library.
template <class Table, class Visit>
void forEachShared(Table const & table, Visit && visit) {
    try {
        for (auto at = table.begin(); at; ++at) {
            auto const value = at.value();
            if (value != decltype(at.value())()) { // a dead slot
                visit(at.key(), value);
            }
        }
    } catch (Pelo::CorruptionDetectedException const & corruption) {
        table.handleCorruption(corruption.what());
    }
}

/// The entries of a shared table for which `keep(key)` holds; null stays null.
template <class Writer, class Table, class Keep>
Vex::Ptr<Table const> keptShared(Vex::Ptr<Table const> const & table, Keep && keep) {
    if (!table) {
        return table;
    }
    auto writer = Writer::inOwnMemory(table->name());
    forEachShared(*table, [&](auto const & key, auto const & value) {
        if (keep(key)) {
            writer.insert(key, value);
        }
    });
    return writer.table();
}

Vex::Ptr<Cli::HostFloodTable const> narrowed(Vex::Ptr<Cli::HostFloodTable const> const & tables,
                                             TableFilter const & filter) {
    if (filter.keepsAll()) {
        return tables;
    }
    auto result = Cli::hostFloodTableFactory();
    result->hostTableIs(keptShared<VcsEvpn::HostTableWriter>(
        tables->hostTable(), [&](VcsEvpn::HostKey const & key) {
            return keeps(filter.vnis, key.vni) && keeps(filter.macs, key.mac);
        }));
    result->floodTableIs(keptShared<VcsEvpn::FloodTableWriter>(
        tables->floodTable(), [&](VcsEvpn::FloodKey const & key) {
            return keeps(filter.vnis, key.vni) && keeps(filter.macs, Nolt::EthAddr());
        }));
    return result;
}

bool keepsName(KeepName const & keep, std::string_view name) {
    return !keep || keep(name);
}

/// Collects the VTEPs in one of the subnets.
class VtepsWithin {
public:
    VtepsWithin(Intervals<Nolt::IpAddr> const & subnets, std::vector<Nolt::IpAddr> & found)
        : subnets_(subnets), found_(found) {}

    void add(VniTables const & tables) {
        for (auto const & entry : tables.macVtepTable()) {
            add(entry.vtepIp());
        }
        for (auto const & entry : tables.macVtepMultiPathTable()) {
            addEach(entry.vtepIp());
        }
        for (auto const & entry : tables.macVtepFloodListTable()) {
            addEach(entry.vtepIp());
        }
    }

    void add(VniStatusDirV2 const & source) {
        for (VniStatusV2 const & status : source.vniStatusV2()) {
            add(static_cast<VniTables const &>(status));
        }
    }

    void add(Cli::HostFloodTable const & tables) {
        if (tables.hostTable()) {
            forEachShared(*tables.hostTable(),
                          [&](auto const &, VcsEvpn::Host const & host) { add(host.vtepIp()); });
        }
        if (tables.floodTable()) {
            forEachShared(*tables.floodTable(),
                          [&](VcsEvpn::FloodKey const & key, auto const &) { add(key.vtepIp); });
        }
    }

private:
    void add(Nolt::IpAddr vtep) {
        // Neighbours in a table are often behind the same VTEP.
        if (subnets_.contains(vtep) && (found_.empty() || found_.back() != vtep)) {
            found_.push_back(vtep);
        }
    }

    void addEach(auto const & vteps) {
        for (Nolt::IpAddr const vtep : vteps) {
            add(vtep);
        }
    }

    Intervals<Nolt::IpAddr> const & subnets_;
    std::vector<Nolt::IpAddr> & found_;
};

} // namespace

Vex::Ptr<Vex::Dir> narrowedSwitches(Vex::Ptr<Vex::Dir> const & switches, KeepName const & keep,
                                    TableFilter const & filter) {
    if (!switches) {
        return nullptr;
    }
    auto result = Vex::makePtr<Vex::Dir>();
    for (auto at = switches->entityPtrIteratorConst(); at; ++at) {
        auto const published = Vex::dynamicPtr<VniStatusDirV2 const>(at.entity());
        if (published && keepsName(keep, at.name().stringValue())) {
            result->entityIs(at.name(), narrowed(published, filter));
        }
    }
    return result;
}

Vex::Ptr<Vex::Dir> narrowedEntries(Vex::Ptr<Vex::Dir> const & entries, VniOfEntry const & vniOf,
                                   TableFilter const & filter) {
    if (!entries) {
        return nullptr;
    }
    auto result = Vex::makePtr<Vex::Dir>();
    for (auto at = entries->entityPtrIteratorConst(); at; ++at) {
        auto const published = Vex::dynamicPtr<VniFdbStatusV2 const>(at.entity());
        auto const vni = filter.vnis.empty() ? std::nullopt : vniOf(at.name().stringValue());
        if (published && (!vni || keeps(filter.vnis, *vni))) {
            auto entry = Vex::makePtr<VniFdbStatusV2>();
            copyKept(*published, filter, *entry);
            result->entityIs(at.name(), entry);
        }
    }
    return result;
}

Vex::Ptr<Cli::VniStatusDirList> narrowedSources(Vex::Ptr<Cli::VniStatusDirList> const & sources,
                                                KeepName const & keep, TableFilter const & filter) {
    if (!sources) {
        return nullptr;
    }
    auto result = Cli::vniStatusDirListFactory();
    for (auto at = sources->vniStatusDir().begin(); at; ++at) {
        if (keepsName(keep, at.key().stringValue())) {
            result->vniStatusDirIs(at.key(), narrowed(sources->vniStatusDir(at.key()), filter));
        }
    }
    return result;
}

Vex::Ptr<Cli::HostFloodTableList> narrowedEvpn(Vex::Ptr<Cli::HostFloodTableList> const & evpn,
                                               KeepName const & keep, TableFilter const & filter) {
    if (!evpn) {
        return nullptr;
    }
    auto result = Cli::hostFloodTableListFactory();
    for (auto at = evpn->hostFloodTable().begin(); at; ++at) {
        if (keepsName(keep, at.key().stringValue())) {
            result->hostFloodTableIs(at.key(), narrowed(evpn->hostFloodTable(at.key()), filter));
        }
    }
    return result;
}

void addVtepsWithin(Intervals<Nolt::IpAddr> const & subnets, Vex::Ptr<Vex::Dir> const & directory,
                    std::vector<Nolt::IpAddr> & found) {
    VtepsWithin vteps(subnets, found);
    if (!directory) {
        return;
    }
    for (auto at = directory->entityPtrIteratorConst(); at; ++at) {
        if (auto const source = Vex::dynamicPtr<VniStatusDirV2 const>(at.entity())) {
            vteps.add(*source);
        } else if (auto const entry = Vex::dynamicPtr<VniTables const>(at.entity())) {
            vteps.add(*entry);
        }
    }
}

void addVtepsWithin(Intervals<Nolt::IpAddr> const & subnets,
                    Vex::Ptr<Cli::VniStatusDirList> const & sources,
                    std::vector<Nolt::IpAddr> & found) {
    VtepsWithin vteps(subnets, found);
    if (sources) {
        for (VniStatusDirV2 const & source : sources->vniStatusDir()) {
            vteps.add(source);
        }
    }
}

void addVtepsWithin(Intervals<Nolt::IpAddr> const & subnets,
                    Vex::Ptr<Cli::HostFloodTableList> const & evpn,
                    std::vector<Nolt::IpAddr> & found) {
    VtepsWithin vteps(subnets, found);
    if (evpn) {
        for (Cli::HostFloodTable const & tables : evpn->hostFloodTable()) {
            vteps.add(tables);
        }
    }
}

void addVtepsWithin(Intervals<Nolt::IpAddr> const & subnets,
                    Vex::Ptr<VxlanController::SwitchInfoDir> const & switches,
                    std::vector<Nolt::IpAddr> & found) {
    if (!switches) {
        return;
    }
    for (auto const & vtep : switches->vtepMap()) {
        auto const & address = vtep.address();
        if (address.family() == Nolt::Family::ipv4 && subnets.contains(address.ipv4())) {
            found.push_back(address.ipv4());
        }
    }
}

} // namespace vxshow::state::narrow
