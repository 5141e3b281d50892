#pragma once

#include "state/VniStatusDirV2.h"
#include "vxshow/sources/DeadlineWatch.h"
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
/// All facts that go to one place are gathered first; the tables are made at the end. So the
/// mount does not depend on the order of the sources, and each table is made once. Where sources
/// disagree:
///
/// - A MAC address that they place behind different VTEPs is shown under each switch that says
///   so, since received tables are per switch. An advertised table has one entry for a MAC
///   address in a VNI: there (and for switches of the same name) it becomes a multipath entry
///   with every VTEP, one row each. Multipath entries count no moves.
/// - A MAC address that all sources place behind the same VTEP has the most moves that any of
///   them has counted.
/// - Flood lists are the union of all; so are the nexthops of a route.
/// - An IP address with several MAC addresses has the one that takes precedence, as
///   `SideFacts::settle` orders them.
/// - EVPN's shared tables hold one VTEP for a MAC address, only the flood list of the zero
///   address, and no bindings. Of several VTEPs it is the one with the most moves; of those, the
///   lowest.
class Merge {
public:
    /// Mounts what is selected, by `deadline`.
    explicit Merge(state::Selection selection = {}, Deadline const & deadline = Deadline::never())
        : selection_(std::move(selection)), watch_(deadline, "the answers were not put together") {}

    /// Adds what one source knows. `facts` is settled, and outlives this. Throws `TimedOut`.
    void add(Facts const & facts, Role role);
    void add(Facts && facts, Role role) = delete;

    /// The mount of all that was added. A part for which no source of its role was added stays
    /// null. Raises `Pelo::TableError` if there is no room for a shared table, and `TimedOut` if
    /// much is left to do at the deadline.
    state::Mount mount();

private:
    /// What all sources know on one side of one place. Facts of a single source are not copied.
    class Gathered {
    public:
        void add(SideFacts const & part) { parts_.push_back(&part); }

        /// Everything, settled.
        SideFacts const & facts(DeadlineWatch & watch) {
            if (parts_.size() == 1) {
                return *parts_.front();
            }
            return merged_ = merged(parts_, watch);
        }

    private:
        std::vector<SideFacts const *> parts_;
        SideFacts merged_;
    };

    /// What is known on both sides of a source that is no switch.
    struct Sides {
        Gathered received;
        Gathered advertised;
    };

    std::optional<Sides> & sidesOf(Role role);
    void addRouters(Facts const & facts);
    Vex::Ptr<VxlanController::VniStatusDirV2> statusDir(Gathered & side, bool selected);
    void mountSwitches(state::Mount & mount);
    void mountSources(state::Mount & mount);
    void mountEvpn(state::Mount & mount);

    state::Selection selection_;
    std::optional<std::map<std::string, Gathered>> switches_;
    Gathered advertised_;
    std::optional<Sides> hsc_;
    std::optional<Sides> qvx_;
    std::optional<Sides> evpn_;
    std::vector<NamedSwitch> switchInfo_;
    std::map<std::string, RouterFacts> routers_;
    bool any_ = false;
    DeadlineWatch watch_;
};

} // namespace vxshow::sources
