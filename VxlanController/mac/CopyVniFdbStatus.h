#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/VniFdbStatusV2.h"
#include "state/VniStatusV2.h"

/// How the tables that are advertised for one VNI get into the advertised tables. There are two
/// kinds of them: those of the directory of VNIs, and those of the HSC. A VNI appears in `vnis`
/// only with its first entry.
namespace VxlanController::Cli {

/// Copies what the filters select from the three tables of `status`: one MAC, or every MAC if
/// `macFilter` is the zero address. When every MAC is copied, a flood list whose MAC has a
/// multipath entry is left out. A null or empty `vtepFilter` lets every VTEP through. Raises
/// `outfmt::SigIntException` if the user interrupts.
void copyVniFdbStatus(VniStatusV2 const * status, Vex::Ptr<VniStatusList> const & vnis,
                      Vxlan::Vni vni, Nolt::EthAddr macFilter,
                      Vex::Ptr<VtepList const> const & vtepFilter);
void copyVniFdbStatus(Vex::Ptr<VniFdbStatusV2 const> const & status,
                      Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni, Nolt::EthAddr macFilter,
                      Vex::Ptr<VtepList const> const & vtepFilter);

/// Copies the entry that `mac` has in one table of `status`, with all its VTEPs. One that is
/// absent is copied as the default value that the look-up yields; an absent flood list is not
/// copied.
void copyFdbMacVtep(VniStatusV2 const * status, Vex::Ptr<VniStatusList> const & vnis,
                    Vxlan::Vni vni, Nolt::EthAddr const & mac);
void copyFdbMacVtep(Vex::Ptr<VniFdbStatusV2 const> const & status,
                    Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
                    Nolt::EthAddr const & mac);
void copyFdbMultiPath(VniStatusV2 const * status, Vex::Ptr<VniStatusList> const & vnis,
                      Vxlan::Vni vni, Nolt::EthAddr const & mac);
void copyFdbMultiPath(Vex::Ptr<VniFdbStatusV2 const> const & status,
                      Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
                      Nolt::EthAddr const & mac);
void copyFdbFloodList(VniStatusV2 const * status, Vex::Ptr<VniStatusList> const & vnis,
                      Vxlan::Vni vni, Nolt::EthAddr const & mac);
void copyFdbFloodList(Vex::Ptr<VniFdbStatusV2 const> const & status,
                      Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
                      Nolt::EthAddr const & mac);

} // namespace VxlanController::Cli
