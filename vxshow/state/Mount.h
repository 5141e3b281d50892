#pragma once

#include "Vex/Dir.h"
#include "VxlanController/VxlanControllerCliModel.h"
#include "state/PublishStatus.h"
#include "state/SwitchInfoDir.h"

namespace vxshow::state {

/// The state that the commands show, in the form in which the library takes it.
///
/// Every source of state (a snapshot, a database, a routing daemon) fills its part of the
/// one mount of a run, and no command knows where its state came from. A null pointer is
/// an absent source, which is not the same as an empty one.
struct Mount {
    /// What the controller has been told.
    struct Received {
        /// By switch: each a `VxlanController::VniStatusDirV2` under the switch's name.
        Vex::Ptr<Vex::Dir> switches;
        /// The sources that are no switches and publish as one does: "HSC", "QVX".
        Vex::Ptr<VxlanController::Cli::VniStatusDirList> sources;
        /// The shared tables of the EVPN service, under "EVPN".
        Vex::Ptr<VxlanController::Cli::HostFloodTableList> evpn;
    };

    /// What the controller tells.
    struct Advertised {
        /// By VNI: each a `VxlanController::VniFdbStatusV2`, normally under the VNI in decimal.
        /// Any name may stand there, and it is for the commands to say what they make of it.
        Vex::Ptr<Vex::Dir> vnis;
        /// The destinations that are no switches and are told as one is: "HSC".
        Vex::Ptr<VxlanController::Cli::VniStatusDirList> sources;
        /// The shared tables that the EVPN service is told, under "EVPN".
        Vex::Ptr<VxlanController::Cli::HostFloodTableList> evpn;
    };

    /// What is known of logical routers.
    struct Routers {
        /// The switches and their VTEPs, each by the other.
        Vex::Ptr<VxlanController::SwitchInfoDir> switchInfoDir;
        /// What each switch publishes, and so which logical routers it has.
        Vex::Ptr<Statestore::PublishStatus> publishStatus;
        /// By logical router: each a `VxlanController::LRStatusV2` of the name under which it
        /// stands.
        Vex::Ptr<Vex::Dir> lRStatusDir;
    };

    Received received;
    Advertised advertised;
    Routers routers;
};

} // namespace vxshow::state
