#pragma once

#include "vxshow/sources/Facts.h"
#include "vxshow/sources/RouterMount.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/SourceNames.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vxshow::sources {

using state::Role;

/// Makes one mount of what many sources know.
///
/// All facts that go to one place are gathered first, whoever told them; the tables are made
/// of them at the end. So the mount does not depend on the order of the sources, and each
/// table is made once. Where sources disagree:
///
/// - A MAC address that they place behind different VTEPs is shown under each switch that says
///   so, since received tables are per switch. An advertised table has one entry for a MAC
///   address in a VNI: there (and for switches of the same name) it becomes a multipath entry
///   with every VTEP that was told, one row each. Multipath entries count no moves.
/// - A MAC address that all place alike has the most moves that any has counted.
/// - Flood lists are the union of all; so are the nexthops of a route.
/// - An IP address with several MAC addresses has the one with the best right to it, as
///   `SideFacts::settle` orders them.
/// - EVPN's shared tables hold one VTEP for a MAC address, no flood list but that of the zero
///   address, and no bindings. Of several VTEPs it is the one with the most moves, the lowest
///   of those.
class Merge {
public:
    /// Mounts what is selected.
    explicit Merge(state::Selection selection = {}) : selection_(std::move(selection)) {}

    void add(Facts const & state, Role role);

    /// The mount of all that was added. A part of it for which no source of its role was
    /// added stays null. Raises `Pelo::TableError` when there is no room for a shared table.
    state::Mount mount();

private:
    /// What is known on both sides of one destination that is no switch.
    struct Sides {
        SideFacts received;
        SideFacts advertised;
    };

    std::optional<Sides> & sidesOf(Role role);
    void addRouters(Facts const & state);
    void mountSwitches(state::Mount & mount);
    void mountSources(state::Mount & mount);
    void mountEvpn(state::Mount & mount);

    state::Selection selection_;
    std::optional<std::map<std::string, SideFacts>> switches_;
    SideFacts advertised_;
    std::optional<Sides> hsc_;
    std::optional<Sides> qvx_;
    std::optional<Sides> evpn_;
    std::vector<NamedSwitch> switchInfo_;
    std::map<std::string, RouterFacts> routers_;
    bool any_ = false;
};

} // namespace vxshow::sources
