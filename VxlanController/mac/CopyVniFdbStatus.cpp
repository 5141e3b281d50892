#include "VxlanController/mac/CopyVniFdbStatus.h"

#include "VxlanController/mac/CopyTables.h"
#include "VxlanController/mac/Target.h"

namespace VxlanController::Cli {

void copyVniFdbStatus(VniStatusV2 const * status, Vex::Ptr<VniStatusList> const & vnis,
                      Vxlan::Vni vni, Nolt::EthAddr macFilter,
                      Vex::Ptr<VtepList const> const & vtepFilter) {
    ListTarget into(vnis);
    copyTables(*status, vni, into, {macFilter, vtepFilter});
}

void copyVniFdbStatus(Vex::Ptr<VniFdbStatusV2 const> const & status,
                      Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni, Nolt::EthAddr macFilter,
                      Vex::Ptr<VtepList const> const & vtepFilter) {
    ListTarget into(vnis);
    copyTables(*status, vni, into, {macFilter, vtepFilter});
}

void copyFdbMacVtep(VniStatusV2 const * status, Vex::Ptr<VniStatusList> const & vnis,
                    Vxlan::Vni vni, Nolt::EthAddr const & mac) {
    ListTarget into(vnis);
    copyMacVtep(*status, vni, into, mac);
}

void copyFdbMacVtep(Vex::Ptr<VniFdbStatusV2 const> const & status,
                    Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
                    Nolt::EthAddr const & mac) {
    ListTarget into(vnis);
    copyMacVtep(*status, vni, into, mac);
}

void copyFdbMultiPath(VniStatusV2 const * status, Vex::Ptr<VniStatusList> const & vnis,
                      Vxlan::Vni vni, Nolt::EthAddr const & mac) {
    ListTarget into(vnis);
    copyMultiPath(*status, vni, into, mac);
}

void copyFdbMultiPath(Vex::Ptr<VniFdbStatusV2 const> const & status,
                      Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
                      Nolt::EthAddr const & mac) {
    ListTarget into(vnis);
    copyMultiPath(*status, vni, into, mac);
}

void copyFdbFloodList(VniStatusV2 const * status, Vex::Ptr<VniStatusList> const & vnis,
                      Vxlan::Vni vni, Nolt::EthAddr const & mac) {
    ListTarget into(vnis);
    copyFloodList(*status, vni, into, mac);
}

void copyFdbFloodList(Vex::Ptr<VniFdbStatusV2 const> const & status,
                      Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
                      Nolt::EthAddr const & mac) {
    ListTarget into(vnis);
    copyFloodList(*status, vni, into, mac);
}

} // namespace VxlanController::Cli
