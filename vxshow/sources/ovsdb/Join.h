#pragma once

#include "vxshow/sources/DeadlineWatch.h"
#include "vxshow/sources/Facts.h"
#include "vxshow/sources/Findings.h"
#include "vxshow/sources/ovsdb/Request.h"
#include "vxshow/sources/ovsdb/Rows.h"
#include "vxshow/sources/ovsdb/Values.h"

#include <compare>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vxshow::sources::ovsdb {

/// Joins the rows of a `hardware_vtep` database into what it knows, row by row as they come.
///
/// References must lead to a row that has come, or they are refused. Text is another matter, for
/// nobody checks it: a row whose text is no address, prefix or VNI is counted and left out.
class Join {
public:
    enum class Side { local, remote };

    using Key = Rows::Key;
    using References = Rows::References;

    /// What stands in several columns of one row.
    struct MacRow {
        Table table;
        Side side;
        std::string_view mac;
        Reference logicalSwitch;
        Reference target; ///< the locator, or the set of them
        std::string_view ip;
    };

    /// Local entries at a VTEP of no switch stand under `name`.
    Join(std::string name, Deadline const & deadline) : name_(std::move(name)), watch_(deadline) {}

    /// To be called for each row and each reference that is read. Throws `TimedOut`.
    void step() { watch_.step(); }

    /// Each takes one row. Throws `Refusal`.
    void logicalSwitch(Reference const & row, std::string name, Key key) {
        rows_.addLogicalSwitch(row, std::move(name), key);
    }

    void locator(Reference const & row, std::string_view ip, Key key) {
        rows_.addLocator(row, ip, key);
    }

    void locatorSet(Reference const & row, References const & locators) {
        rows_.addLocatorSet(row, locators);
    }

    void port(Reference const & row, References const & logicalSwitches) {
        rows_.addPort(row, logicalSwitches);
    }

    void physicalSwitch(std::string const & name, std::vector<std::string> const & ips,
                        References const & ports);
    void router(std::string const & name,
                std::vector<std::pair<std::string, Reference>> const & ports,
                std::vector<std::pair<std::string, std::string>> const & routes);
    void unicast(MacRow const & row);
    void multicast(MacRow const & row);

    /// The logical switches with the key `vni`, and those without any key: what is in those has
    /// the VNI of its locator.
    std::set<Uuid> logicalSwitchesOf(Vxlan::Vni vni) const;

    /// What has been joined, settled, and what was noticed. The join is over.
    std::pair<Facts, Findings> finished();

private:
    using LogicalSwitch = Rows::LogicalSwitch;
    using Locator = Rows::Locator;
    using LocatorSet = Rows::LocatorSet;

    /// The VNI of an entry; notices an entry that has none.
    std::optional<Vxlan::Vni> vniOf(MacRow const & row, LogicalSwitch const & logicalSwitch,
                                    Locator const & locator);

    /// Calls `take(SideFacts &)` for each side that an entry at `locator`, which has an address,
    /// is on; `what()` tells the entry when that is of no switch.
    template <class What, class Take>
    void place(Side side, Locator & locator, What && what, Take && take);

    /// The binding of an entry, if it has one; nothing when its text is none.
    std::optional<Nolt::IpGenAddr> bindingOf(MacRow const & row,
                                             LogicalSwitch const & logicalSwitch);

    /// The sides of the switches that have the locator's address; none, one or several.
    std::set<SideFacts *> const & switchesAt(Locator & locator) const;

    /// Frames for `mac` are flooded to the locators of a set.
    struct Flooding {
        Table table;
        std::optional<Vxlan::Vni> vni; ///< of the logical switch; none: of each locator its own
        Nolt::EthAddr mac;
        LocatorSet const * set;

        auto operator<=>(Flooding const &) const = default;
    };

    using Place = std::pair<SideFacts *, Vxlan::Vni>;

    /// Adds the flood targets; gives the sides and VNIs they are in. What is told of them is the
    /// same for every row that floods so.
    std::set<Place> flood(Flooding const & flooding, Side side);

    /// Each looks once at a set to which a row floods: tells of the locators without an address,
    /// and takes them out; and of those without a VNI, for a logical switch without a key.
    void checkAddresses(LocatorSet & set);
    void checkKeys(LocatorSet & set);
    void leaveOut(LocatorSet const & set, std::string_view found, std::string_view expected);

    void leaveOut(MacRow const & row, LogicalSwitch const & logicalSwitch, std::string_view column,
                  std::string_view text, std::string_view expected);

    /// What a switch with a port in `logicalSwitch` has: its VNI, and its routers.
    void addBound(std::string const & name, LogicalSwitch const & logicalSwitch);

    void addVnis();
    void findDisputes();

    std::string name_;
    Facts state_;
    Findings findings_;
    Rows rows_;
    std::map<std::string, std::set<Uuid>> switchPorts_;
    std::map<Nolt::IpAddr, std::set<SideFacts *>> switchesByIp_;
    std::map<Flooding, std::set<Place>> flooded_;
    DeadlineWatch watch_;
};

} // namespace vxshow::sources::ovsdb
