#pragma once

#include "Nolt/IpAddr.h"
#include "Vxlan/Vni.h"
#include "vxshow/sources/Facts.h"
#include "vxshow/sources/ovsdb/Values.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vxshow::sources::ovsdb {

/// The rows of a `hardware_vtep` database to which others refer, by their identity.
///
/// References must lead to a row that has come: a server keeps them so, and a broken one is
/// refused like any wrong form. The places of rows do not move.
class Rows {
public:
    /// A tunnel_key as it stands there: a set of at most one number, any number.
    using Key = std::optional<std::int64_t>;
    using References = std::vector<Reference>;

    struct LogicalSwitch {
        std::string name;
        Key key;
        std::set<std::string> routers = {};

        /// The VNI that its own key is.
        std::optional<Vxlan::Vni> vni() const;
    };

    struct Locator {
        std::string text; ///< of the address, when it is none
        std::optional<Nolt::IpAddr> ip;
        Key key;
        /// The sides of the switches that have the address; null until it has been looked for.
        std::set<SideFacts *> const * switches = nullptr;

        /// The VNI that its own key is.
        std::optional<Vxlan::Vni> vni() const;
    };

    struct LocatorSet {
        Uuid row;
        std::vector<Locator *> members; ///< each once
        bool addressesChecked = false;  ///< those without an address are told, and taken out
        bool keysChecked = false;       ///< those without a VNI of their own are told
    };

    template <class Row>
    using ByIdentity = std::unordered_map<Uuid, Row, UuidHash>;

    /// Each takes one row, which refers to rows that are there. Throws `Refusal`.
    void addLogicalSwitch(Reference const & row, std::string name, Key key);
    void addLocator(Reference const & row, std::string_view ip, Key key);
    void addLocatorSet(Reference const & row, References const & locators);
    void addPort(Reference const & row, References const & logicalSwitches);

    /// Each gives the row to which a reference leads. Throws `Refusal` when it leads nowhere.
    LogicalSwitch & logicalSwitch(Reference const & to);
    Locator & locator(Reference const & to);
    LocatorSet & locatorSet(Reference const & to);

    ByIdentity<LogicalSwitch> const & logicalSwitches() const noexcept { return logicalSwitches_; }

    /// The logical switches that are bound to a port, each once; none when there is no such port.
    std::vector<LogicalSwitch *> const & boundTo(Uuid const & port) const;

private:
    ByIdentity<LogicalSwitch> logicalSwitches_;
    ByIdentity<Locator> locators_;
    ByIdentity<LocatorSet> locatorSets_;
    ByIdentity<std::vector<LogicalSwitch *>> ports_;
};

} // namespace vxshow::sources::ovsdb
