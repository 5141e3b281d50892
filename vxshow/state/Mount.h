#pragma once

#include "Vex/Dir.h"
#include "VxlanController/VxlanControllerCliModel.h"
#include "state/PublishStatus.h"
#include "state/SwitchInfoDir.h"
#include "vxshow/state/Counters.h"
#include "vxshow/state/Details.h"
#include "vxshow/state/Origin.h"

#include <map>
#include <optional>
#include <string>

namespace vxshow::state {

/// The state that the commands show, in the form that the library takes.
///
/// Every source of state (a snapshot, a database, a routing daemon) fills its part of the single
/// mount of a run, and no command knows where its state came from. A null pointer is an absent
/// source, which is not the same as an empty one.
struct Mount {
    /// What the controller has been told.
    struct Received {
        /// By switch: each a `VxlanController::VniStatusDirV2` under the switch's name.
        Vex::Ptr<Vex::Dir> switches;
        /// The sources that are not switches but publish as one does: "HSC", "QVX".
        Vex::Ptr<VxlanController::Cli::VniStatusDirList> sources;
        /// The shared tables of the EVPN service, under "EVPN".
        Vex::Ptr<VxlanController::Cli::HostFloodTableList> evpn;
    };

    /// What the controller tells others.
    struct Advertised {
        /// By VNI: each a `VxlanController::VniFdbStatusV2`, normally under the VNI in decimal. Any
        /// other name is possible, and each command decides what to make of it.
        Vex::Ptr<Vex::Dir> vnis;
        /// The destinations that are not switches but are told as one is: "HSC".
        Vex::Ptr<VxlanController::Cli::VniStatusDirList> sources;
        /// The shared tables that are advertised to the EVPN service, under "EVPN".
        Vex::Ptr<VxlanController::Cli::HostFloodTableList> evpn;
    };

    /// What is known about logical routers.
    struct Routers {
        /// The switches and their VTEPs, which refer to each other.
        Vex::Ptr<VxlanController::SwitchInfoDir> switchInfoDir;
        /// What each switch publishes, and so which logical routers it has.
        Vex::Ptr<Statestore::PublishStatus> publishStatus;
        /// By logical router: each a `VxlanController::LRStatusV2` with the same name as its entry.
        Vex::Ptr<Vex::Dir> lRStatusDir;
        /// The identifiers of switches by name, for those whose name and identifier a live source
        /// reports. Only used to find a switch: no listing has these names.
        std::multimap<std::string, std::string> switchNames = {};
    };

    Received received;
    Advertised advertised;
    Routers routers;

    /// Where the state comes from; nullopt: that is not known, as of a snapshot made by hand.
    std::optional<Origin> origin = {};
    /// What no listing of the library shows.
    Details details = {};
    KeptCounters counters = {};
};

} // namespace vxshow::state
