#pragma once

#include "vxshow/sources/DeadlineWatch.h"
#include "vxshow/sources/FactBudget.h"
#include "vxshow/sources/Facts.h"
#include "vxshow/sources/Findings.h"
#include "vxshow/sources/ovsdb/Request.h"
#include "vxshow/sources/ovsdb/Rows.h"
#include "vxshow/sources/ovsdb/Values.h"

#include <compare>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vxshow::sources::ovsdb {

/// Joins the rows of a `hardware_vtep` database into facts, row by row as they arrive.
///
/// What a row comes to is counted when it arrives. If that is more than one fact on one side, the
/// facts are made after the last row, so that an answer of too many is refused before they take
/// memory.
///
/// A reference must lead to a row that has arrived; otherwise it is refused. Servers do not
/// validate text, so a row with an invalid address, prefix or VNI is counted and left out.
class Join {
public:
    enum class Side { local, remote };

    using Key = Rows::Key;
    using References = Rows::References;

    /// The columns of one row of a MAC table.
    struct MacRow {
        Table table;
        Side side;
        std::string_view mac;
        Reference logicalSwitch;
        Reference target; ///< the locator, or the set of them
        std::string_view ip;
    };

    /// Local entries at a VTEP of no switch are listed under `name`. All rows together can come to
    /// `maxFacts` facts.
    Join(std::string name, Deadline const & deadline, std::size_t maxFacts = defaultMaxFacts)
        : name_(std::move(name)), watch_(deadline), budget_(maxFacts) {}

    /// To be called for each row and each reference that is read. Throws `TimedOut`.
    void step() { watch_.step(); }

    /// To be called before so many bytes are read at once, and after that. Throws `TimedOut`.
    void bytes(std::size_t count) { watch_.bytes(count); }

    /// Each takes one row. Throws `Refusal`, and `TooManyFacts` before it adds the facts.
    void logicalSwitch(Reference const & row, std::string name, Key key) {
        rows_.addLogicalSwitch(row, std::move(name), key);
    }

    void locator(Reference const & row, std::string_view ip, Key key) {
        rows_.addLocator(row, ip, key);
    }

    void locatorSet(Reference const & row, References const & locators) {
        rows_.addLocatorSet(row, locators, watch_);
    }

    void port(Reference const & row, References const & logicalSwitches) {
        rows_.addPort(row, logicalSwitches, watch_);
    }

    void physicalSwitch(std::string const & name, std::vector<std::string> const & ips,
                        References const & ports);
    void router(std::string const & name,
                std::vector<std::pair<std::string, Reference>> const & ports,
                std::vector<std::pair<std::string, std::string>> const & routes);
    void unicast(MacRow const & row);
    void multicast(MacRow const & row);

    /// The logical switches with the key `vni`, and those without any key: the entries of those
    /// have the VNI of their locator.
    std::set<Uuid> logicalSwitchesOf(Vxlan::Vni vni);

    /// The facts, settled, and the findings. To be called once, after the last row. Throws
    /// `TimedOut` and `TooManyFacts`.
    std::pair<Facts, Findings> finished();

private:
    using LogicalSwitch = Rows::LogicalSwitch;
    using Locator = Rows::Locator;
    using LocatorSet = Rows::LocatorSet;

    /// The VNI of an entry; nullopt if it has none, which is counted.
    std::optional<Vxlan::Vni> vniOf(MacRow const & row, LogicalSwitch const & logicalSwitch,
                                    Locator const & locator);

    static Side sideOf(Table table) {
        return table == Table::mcastMacsLocal || table == Table::ucastMacsLocal ? Side::local
                                                                                : Side::remote;
    }

    /// What a row of a MAC table is about: an address, and what an IP address belongs to.
    static Subjects aboutMac(Side side) {
        return side == Side::local ? Subject::localMacs : Subject::remoteMacs;
    }

    static Subjects aboutBinding(Side side) {
        return side == Side::local ? Subject::localBindings : Subject::remoteBindings;
    }

    static Subjects aboutAll(MacRow const & row) {
        return row.ip.empty() ? aboutMac(row.side) : aboutMac(row.side) | aboutBinding(row.side);
    }

    /// How many sides an entry at `locator`, which has an address, is on: at least 1.
    std::size_t sideCount(Side side, Locator & locator) const;

    /// Calls `take(SideFacts &)` for each of these sides.
    template <class Take>
    void eachSide(Side side, Locator & locator, Take && take);

    /// Counts a local entry whose address belongs to no switch; `what()` describes it.
    template <class What>
    void checkPlaced(Side side, Subjects about, Locator & locator, What && what);

    /// The IP address of an entry; nullopt if it has none or an invalid one, which is counted.
    std::optional<Nolt::IpGenAddr> bindingOf(MacRow const & row,
                                             LogicalSwitch const & logicalSwitch);

    /// The sides of the switches that have the locator's address: none, one or several.
    std::set<SideFacts *> const & switchesAt(Locator & locator) const;

    /// Frames for `mac` are flooded to the locators of a set.
    struct Flooding {
        Table table;
        std::optional<Vxlan::Vni> vni; ///< of the logical switch; none: each locator has its own
        Nolt::EthAddr mac;
        LocatorSet const * set;

        auto operator<=>(Flooding const &) const = default;
    };

    using Place = std::pair<SideFacts *, Vxlan::Vni>;

    /// An entry of `Ucast_Macs_*` that is usable.
    struct Entry {
        Locator * locator;
        Vxlan::Vni vni;
        Nolt::EthAddr mac;
        std::optional<Nolt::IpGenAddr> ip;
    };

    void add(Entry const & entry, Side side);

    /// The rows that flood alike.
    struct FloodList {
        std::optional<std::size_t> places; ///< how many there are; nullopt: not counted yet
        std::vector<Nolt::IpGenAddr> ips;
    };

    /// Calls `take(vni, locator)` for each member with a VNI.
    template <class Take>
    void eachMember(Flooding const & flooding, Take && take);

    /// Counts the facts of a flood list, and its members at addresses of no switch.
    void countFlood(Flooding const & flooding);

    /// The sides and VNIs that a flood list is in.
    std::set<Place> placesOf(Flooding const & flooding);

    /// Adds the facts of a flood list, with the addresses of the group.
    void flood(Flooding const & flooding, std::vector<Nolt::IpGenAddr> const & ips);

    /// Each checks a set that a row floods to, once. The first counts the locators without an
    /// address and removes them; the second counts those without a VNI, which matters if the
    /// logical switch has no key.
    void checkAddresses(LocatorSet & set, Side side);
    void checkKeys(LocatorSet & set, Side side);
    void leaveOut(LocatorSet const & set, Side side, std::string_view found,
                  std::string_view expected);

    void leaveOut(MacRow const & row, Subjects about, LogicalSwitch const & logicalSwitch,
                  std::string_view column, std::string_view text, std::string_view expected);

    /// Adds the VNI and the routers of `logicalSwitch` to a switch with a port in it.
    void addBound(std::string const & name, LogicalSwitch const & logicalSwitch);

    void addVnis();

    /// The logical switches that are bound to one of these ports and come to facts.
    std::set<LogicalSwitch const *> boundTo(std::set<Uuid> const & ports);

    void findDisputes();

    std::string name_;
    Facts facts_;
    Findings findings_;
    Rows rows_;
    std::map<std::string, std::set<Uuid>> switchPorts_;
    std::map<Nolt::IpAddr, std::set<SideFacts *>> switchesByIp_;
    std::map<Flooding, FloodList> flooded_;
    std::vector<Entry> shared_; ///< local ones at an address of several switches
    DeadlineWatch watch_;
    FactBudget budget_;
};

} // namespace vxshow::sources::ovsdb
