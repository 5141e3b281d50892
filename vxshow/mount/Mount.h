#pragma once

#include "Vex/Dir.h"
#include "VxlanController/VxlanControllerCliModel.h"

namespace vxshow {

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

    Received received;
};

} // namespace vxshow
