#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/LRStatusV2.h"
#include "state/PublishStatus.h"
#include "state/SwitchInfoDir.h"

#include <initializer_list>
#include <string>
#include <vector>

/// One physical port of an uplink with its VLAN, as a test writes it down.
struct PortVlan {
    char const * port;
    Vex::U16 vlan = 0;
};

/// Switches that publish routers are known by their system's MAC address.
inline std::string const leafOne = "02:00:00:00:00:01";
inline std::string const leafTwo = "02:00:00:00:00:02";
inline std::string const leafThree = "02:00:00:00:00:03";

/// A published state of logical routers, as a test writes it down. The order of the calls makes
/// no difference to what is published.
class RouterState {
public:
    /// A switch with VTEPs, each in service unless `inactive` says otherwise, that publishes
    /// `routers`. The identifier must be an Ethernet address when it publishes any.
    RouterState & leaf(std::string const & switchId, std::initializer_list<char const *> vteps,
                       std::initializer_list<std::string> routers = {});
    RouterState & inactive(char const * vtep);

    /// Makes a VTEP name a switch, whether or not that switch is known.
    RouterState & vtepNames(char const * vtep, std::string const & switchId);

    /// Adds a path that a system publishes.
    RouterState & publishes(char const * systemId, std::string const & path,
                            std::string const & kind = "Vxlan");

    /// A logical router with an empty status.
    RouterState & router(std::string const & name);
    RouterState & port(std::string const & router, char const * ip, Vex::U32 vni,
                       char const * mac = "00:00:00:00:00:00", char const * vtep = "");
    RouterState & uplink(std::string const & router, char const * ip,
                         std::initializer_list<PortVlan> ports,
                         char const * mac = "00:00:00:00:00:00", char const * vtep = "");
    RouterState & route(std::string const & router, char const * prefix,
                        std::initializer_list<char const *> nexthops = {});

    /// The status in the directory under `entry`, created if absent. The router is named `name`,
    /// or `entry` if that is empty.
    VxlanController::LRStatusV2 & status(std::string const & entry, std::string const & name = "");

    Vex::Ptr<Statestore::PublishStatus> publishStatus = Vex::makePtr<Statestore::PublishStatus>();
    Vex::Ptr<VxlanController::SwitchInfoDir> switchInfoDir =
        Vex::makePtr<VxlanController::SwitchInfoDir>();
    Vex::Ptr<Vex::Dir> lRStatusDir = Vex::makePtr<Vex::Dir>();
};

/// The path under which a switch publishes a logical router.
std::string routerPath(std::string const & router);

/// `count` switches, each with a logical router of its own that has a port, an uplink and a
/// route. The listings of 20,000 exceed all buffers on the way to a reader.
RouterState manyRouters(Vex::U32 count);

/// The filters of the listings; none is set at first. Each command uses those that it has.
struct RouterFilters {
    std::string router = {};
    std::string switchId = {};
    std::vector<char const *> vteps = {};
    char const * prefix = "";
    bool dotted = false;
};

/// The commands that list `state`.
Vex::Ptr<VxlanController::Cli::VcsLRMap> mapCommand(RouterState const & state,
                                                    RouterFilters const & filters = {});
Vex::Ptr<VxlanController::Cli::VcsLR> detailCommand(RouterState const & state,
                                                    RouterFilters const & filters = {});
Vex::Ptr<VxlanController::Cli::VcsLRRoute> routesCommand(RouterState const & state,
                                                         RouterFilters const & filters = {});

/// What they render.
std::string mapText(RouterState const & state, RouterFilters const & filters = {});
std::string mapJson(RouterState const & state, RouterFilters const & filters = {});
std::string detailText(RouterState const & state, RouterFilters const & filters = {});
std::string detailJson(RouterState const & state, RouterFilters const & filters = {});
std::string routesText(RouterState const & state, RouterFilters const & filters = {});
std::string routesJson(RouterState const & state, RouterFilters const & filters = {});

/// The text listings without their headers, which must be those of an empty listing.
std::string mapBody(RouterState const & state, RouterFilters const & filters = {});
std::string portBody(RouterState const & state, RouterFilters const & filters = {});
std::string uplinkBody(RouterState const & state, RouterFilters const & filters = {});
std::string routesBody(RouterState const & state, RouterFilters const & filters = {});

/// The same for a listing that is already rendered.
std::string mapBodyOf(std::string const & text);
std::string routesBodyOf(std::string const & text);
