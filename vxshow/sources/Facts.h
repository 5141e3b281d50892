#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenAddrWithMask.h"
#include "Nolt/IpGenPrefix.h"
#include "Vxlan/Vni.h"

#include <compare>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// What one live source of state knows, in terms that no kind of source has for its own.
///
/// Everything is a list of facts, each complete in itself, so that what several sources know
/// is put together by appending, and that the order in which rows came is gone once a list is
/// sorted. There is nothing here but values: a source is read on a thread of its own, and
/// what it knows is handed over without sharing anything.
namespace vxshow::sources {

/// A unicast MAC address is behind a VTEP. One that is behind several at once is one such
/// fact for each of them.
struct MacPlace {
    Vxlan::Vni vni;
    Nolt::EthAddr mac;
    Nolt::IpAddr vtep;
    Vex::U32 moves = 0; ///< so often it has moved; 0 where the source does not count

    auto operator<=>(MacPlace const &) const = default;
};

/// Frames for `mac` are flooded to a VTEP; the zero address stands for everything that has no
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

/// What is known from one side: what a VTEP has learned itself, or what it was told.
struct SideFacts {
    std::vector<Vxlan::Vni> vnis; ///< also those of which nothing else is known
    std::vector<MacPlace> macs;
    std::vector<FloodTarget> floods;
    std::vector<IpBinding> bindings;

    /// Adds all that `other` knows.
    void append(SideFacts const & other);

    /// Puts each list into its one order, without repetitions, and every VNI that a fact is
    /// about into `vnis`. Of places that differ in the moves alone, the one with the most
    /// stays. The bindings of an address stand in the order of their right to it: the higher
    /// preference first, then the more changes, then the lower MAC address.
    void settle();

    bool operator==(SideFacts const &) const = default;
};

/// A switch and the addresses of its VTEPs.
struct SwitchFacts {
    std::optional<Nolt::EthAddr> systemId = {}; ///< none: nobody has told
    std::set<Nolt::IpGenAddr> vteps = {};
    std::set<std::string> routers = {}; ///< the logical routers that run on it

    bool operator==(SwitchFacts const &) const = default;
};

/// An IP interface of a logical router in a VNI.
struct RouterPort {
    Vxlan::Vni vni;
    Nolt::EthAddr mac = {};    ///< zero: the source does not tell
    Nolt::IpGenAddr vtep = {}; ///< none: the source does not tell

    auto operator<=>(RouterPort const &) const = default;
};

/// A logical router. Of several sources' ports with one address the least is shown; the
/// nexthops of a prefix are those of all of them.
struct RouterFacts {
    std::map<Nolt::IpGenAddrWithMask, std::set<RouterPort>> ports = {};
    std::map<Nolt::IpGenPrefix, std::set<Nolt::IpGenAddr>> routes = {};

    bool operator==(RouterFacts const &) const = default;
};

/// All that one source knows.
struct Facts {
    /// What was learned locally, by the name of the switch that learned it. A switch that has
    /// learned nothing stands here, too.
    std::map<std::string, SideFacts> local;
    /// What the source was told of everything else.
    SideFacts remote;
    std::map<std::string, SwitchFacts> switches; ///< by name
    std::map<std::string, RouterFacts> routers;  ///< by name

    /// Settles every side.
    void settle();

    bool operator==(Facts const &) const = default;
};

} // namespace vxshow::sources
