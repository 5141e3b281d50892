#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/LRStatusV2.h"
#include "state/PublishStatus.h"
#include "state/SwitchInfoDir.h"

#include <initializer_list>
#include <string>
#include <vector>

/// One physical port with a VLAN of an uplink, as a test writes it down.
struct PortVlan {
    char const * port;
    Vex::U16 vlan = 0;
};

/// Switches that publish routers are known by their system's MAC address.
inline std::string const leafOne = "02:00:00:00:00:01";
inline std::string const leafTwo = "02:00:00:00:00:02";
inline std::string const leafThree = "02:00:00:00:00:03";

/// A published state of logical routers written down by a test. The order of the calls makes
/// no difference to what is published.
class RouterState {
public:
    /// A switch with VTEPs, each in service unless `inactive` says otherwise, that publishes
    /// `routers`. The identifier must be an Ethernet address when it publishes any.
    RouterState & leaf(std::string const & switchId, std::initializer_list<char const *> vteps,
                       std::initializer_list<std::string> routers = {});
    RouterState & inactive(char const * vtep);

    /// Has a VTEP name a switch, whether or not that switch is known.
    RouterState & vtepNames(char const * vtep, std::string const & switchId);

    /// Anything else that a system publishes.
    RouterState & publishes(char const * systemId, std::string const & path,
                            std::string const & kind = "Vxlan");

    /// A logical router with a status and nothing in it.
    RouterState & router(std::string const & name);
    RouterState & port(std::string const & router, char const * ip, Vex::U32 vni,
                       char const * mac = "00:00:00:00:00:00", char const * vtep = "");
    RouterState & uplink(std::string const & router, char const * ip,
                         std::initializer_list<PortVlan> ports,
                         char const * mac = "00:00:00:00:00:00", char const * vtep = "");
    RouterState & route(std::string const & router, char const * prefix,
                        std::initializer_list<char const *> nexthops = {});

    /// The status that stands in the directory under `entry`, its own name unless `name` is
    /// given; made when there is none.
    VxlanController::LRStatusV2 & status(std::string const & entry, std::string const & name = "");

    Vex::Ptr<Statestore::PublishStatus> publishStatus = Vex::makePtr<Statestore::PublishStatus>();
    Vex::Ptr<VxlanController::SwitchInfoDir> switchInfoDir =
        Vex::makePtr<VxlanController::SwitchInfoDir>();
    Vex::Ptr<Vex::Dir> lRStatusDir = Vex::makePtr<Vex::Dir>();
};

/// The path under which a switch publishes a logical router.
std::string routerPath(std::string const & router);

/// `count` switches with a logical router of its own each, and of each router a port, an
/// uplink and a route. 20,000 are more than all buffers on the way to a reader hold.
RouterState manyRouters(Vex::U32 count);

/// The filters of the listings; all absent at first. Each command takes those that it has.
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

/// The text listings behind their headers, which must be there as they always are.
std::string mapBody(RouterState const & state, RouterFilters const & filters = {});
std::string portBody(RouterState const & state, RouterFilters const & filters = {});
std::string uplinkBody(RouterState const & state, RouterFilters const & filters = {});
std::string routesBody(RouterState const & state, RouterFilters const & filters = {});

/// The same, of a listing that was rendered already.
std::string mapBodyOf(std::string const & text);
std::string routesBodyOf(std::string const & text);
