#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenAddrWithMask.h"
#include "Nolt/IpGenPrefix.h"
#include "Vxlan/Vni.h"
#include "vxshow/sources/DeadlineWatch.h"
#include "vxshow/state/Details.h"

#include <compare>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What one live source of state knows, in terms that are common to all kinds of source.
///
/// Everything is a list of facts, each complete in itself. The lists of an `Answer` are settled:
/// sorted, and without repetitions (`Facts::settle`). So the order in which rows arrived does not
/// matter, and what several sources know is put together by merging their lists. There are only
/// values here: each source is read on a thread of its own, which hands over what it read without
/// sharing anything.
namespace vxshow::sources {

/// A unicast MAC address is behind a VTEP. If it is behind several at once, there is one such
/// fact for each of them.
struct MacPlace {
    Vxlan::Vni vni;
    Nolt::EthAddr mac;
    Nolt::IpAddr vtep;
    Vex::U32 moves = 0; ///< how often it has moved; 0 if the source does not count

    auto operator<=>(MacPlace const &) const = default;
};

/// Frames for `mac` are flooded to a VTEP. The zero address stands for every address without an
/// entry of its own.
struct FloodTarget {
    Vxlan::Vni vni;
    Nolt::EthAddr mac;
    Nolt::IpAddr vtep;

    auto operator<=>(FloodTarget const &) const = default;
};

/// An IP address belongs to a MAC address.
struct IpBinding {
    Vxlan::Vni vni;
    Nolt::IpGenAddr ip;
    Nolt::EthAddr mac;
    Vex::U8 preference = 0;
    Vex::U32 changes = 0;

    auto operator<=>(IpBinding const &) const = default;
};

/// What is known on one side: what a VTEP has learned itself, or what it was told.
struct SideFacts {
    std::vector<Vxlan::Vni> vnis; ///< including those of which nothing else is known
    std::vector<MacPlace> macs;
    std::vector<FloodTarget> floods;
    std::vector<IpBinding> bindings;

    /// Sorts each list, removes repetitions, and adds every VNI that a fact is about to `vnis`.
    /// Of places that differ only in their moves, the one with the most stays. The bindings of an
    /// address are in order of precedence: the higher preference first, then the more changes,
    /// then the lower MAC address. Throws `TimedOut` once the deadline of `watch` is over.
    void settle(DeadlineWatch & watch);

    /// The same without a deadline.
    void settle() {
        DeadlineWatch watch(Deadline::never());
        settle(watch);
    }

    bool operator==(SideFacts const &) const = default;
};

/// All that several sides know. Each of `parts` is settled, and so is the result. Throws `TimedOut`
/// once the deadline of `watch` is over.
SideFacts merged(std::vector<SideFacts const *> const & parts, DeadlineWatch & watch);

/// A switch and the addresses of its VTEPs.
struct SwitchFacts {
    std::optional<Nolt::EthAddr> systemId = {}; ///< none: not known
    std::set<Nolt::IpGenAddr> vteps = {};
    std::set<std::string> routers = {}; ///< the logical routers that run on it

    bool operator==(SwitchFacts const &) const = default;
};

/// An IP interface of a logical router in a VNI.
struct RouterPort {
    Vxlan::Vni vni;
    Nolt::EthAddr mac = {};    ///< zero: the source does not report it
    Nolt::IpGenAddr vtep = {}; ///< none: the source does not report it

    auto operator<=>(RouterPort const &) const = default;
};

/// A logical router. If several sources have a port with the same address, the least port is
/// shown; the nexthops of a prefix are those of all sources.
struct RouterFacts {
    std::map<Nolt::IpGenAddrWithMask, std::set<RouterPort>> ports = {};
    std::map<Nolt::IpGenPrefix, std::set<Nolt::IpGenAddr>> routes = {};

    bool operator==(RouterFacts const &) const = default;
};

/// All that one source knows.
struct Facts {
    /// What was learned locally, by the name of the switch that learned it. A switch that has
    /// learned nothing is here, too.
    std::map<std::string, SideFacts> local;
    /// What the source was told about everything else.
    SideFacts remote;
    std::map<std::string, SwitchFacts> switches; ///< by name
    std::map<std::string, RouterFacts> routers;  ///< by name
    state::SourceDetails details;                ///< if they are selected

    /// Settles every side, and the details. To be called once, when all facts are there. Throws
    /// `TimedOut` once the deadline of `watch` is over.
    void settle(DeadlineWatch & watch);

    /// The same without a deadline.
    void settle() {
        DeadlineWatch watch(Deadline::never());
        settle(watch);
    }

    bool operator==(Facts const &) const = default;
};

} // namespace vxshow::sources
