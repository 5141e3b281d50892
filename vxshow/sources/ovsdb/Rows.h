#pragma once

#include "Nolt/IpAddr.h"
#include "Vxlan/Vni.h"
#include "vxshow/sources/DeadlineWatch.h"
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
/// A reference must lead to a row that has arrived: servers ensure that, and a dangling reference
/// is refused as malformed. Rows do not move in memory.
class Rows {
public:
    /// A tunnel_key as stored: at most one number, which can be any number.
    using Key = std::optional<std::int64_t>;
    using References = std::vector<Reference>;

    struct LogicalSwitch {
        std::string name;
        Key key;
        std::set<std::string const *> routers = {}; ///< their names, which outlive the row

        /// The VNI of its own key.
        std::optional<Vxlan::Vni> vni() const;
    };

    struct Locator {
        std::string text; ///< of the address, if it is invalid
        std::optional<Nolt::IpAddr> ip;
        Key key;
        /// The sides of the switches that have the address; null until it is looked up.
        std::set<SideFacts *> const * switches = nullptr;

        /// The VNI of its own key.
        std::optional<Vxlan::Vni> vni() const;
    };

    struct LocatorSet {
        Uuid row;
        std::vector<Locator *> members; ///< each once
        bool addressesChecked = false;  ///< those without an address are counted and removed
        bool keysChecked = false;       ///< those without a VNI of their own are counted
    };

    template <class Row>
    using ByIdentity = std::unordered_map<Uuid, Row, UuidHash>;

    /// Each adds one row, which refers only to rows that have been added. Throws `Refusal`, and
    /// `TimedOut` if there are many references.
    void addLogicalSwitch(Reference const & row, std::string name, Key key);
    void addLocator(Reference const & row, std::string_view ip, Key key);
    void addLocatorSet(Reference const & row, References const & locators, DeadlineWatch & watch);
    void addPort(Reference const & row, References const & logicalSwitches, DeadlineWatch & watch);

    /// Each returns the row that a reference leads to. Throws `Refusal` if there is none.
    LogicalSwitch & logicalSwitch(Reference const & to);
    Locator & locator(Reference const & to);
    LocatorSet & locatorSet(Reference const & to);

    ByIdentity<LogicalSwitch> const & logicalSwitches() const noexcept { return logicalSwitches_; }

    /// The logical switches that are bound to a port, each once; empty if there is no such port.
    std::vector<LogicalSwitch *> const & boundTo(Uuid const & port) const;

private:
    ByIdentity<LogicalSwitch> logicalSwitches_;
    ByIdentity<Locator> locators_;
    ByIdentity<LocatorSet> locatorSets_;
    ByIdentity<std::vector<LogicalSwitch *>> ports_;
};

} // namespace vxshow::sources::ovsdb
