#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/VniStatusV2.h"

/// How the tables that one source has received for one VNI get into the received tables. A
/// source and its VNI appear in `target` only with their first entry.
namespace VxlanController::Cli {

/// Copies what the filters select from the three tables of `status`: one MAC, or every MAC if
/// `macFilter` is the zero address. A MAC in several tables is copied from each of them. A null
/// or empty `vtepFilter` lets every VTEP through. Raises `outfmt::SigIntException` if the user
/// interrupts.
void copyVniStatus(Vex::Ptr<VniStatusV2 const> const & status, Vex::Ptr<SwitchDir> const & target,
                   Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr macFilter,
                   Vex::Ptr<VtepList const> const & vtepFilter);

/// Copies the entry that `mac` has in one table of `status`, with all its VTEPs. One that is
/// absent is copied as the default value that the look-up yields; an absent flood list is not
/// copied.
void copyMacVtep(Vex::Ptr<VniStatusV2 const> const & status, Vex::Ptr<SwitchDir> const & target,
                 Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr const & mac);
void copyMultiPath(Vex::Ptr<VniStatusV2 const> const & status, Vex::Ptr<SwitchDir> const & target,
                   Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr const & mac);
void copyFloodList(Vex::Ptr<VniStatusV2 const> const & status, Vex::Ptr<SwitchDir> const & target,
                   Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr const & mac);

} // namespace VxlanController::Cli
