#include "VxlanController/mac/CopyVniStatus.h"

#include "VxlanController/mac/CopyTables.h"
#include "VxlanController/mac/Target.h"

namespace VxlanController::Cli {

void copyVniStatus(Vex::Ptr<VniStatusV2 const> const & status, Vex::Ptr<SwitchDir> const & target,
                   Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr macFilter,
                   Vex::Ptr<VtepList const> const & vtepFilter) {
    SourceTarget into(target, source);
    copyTables(*status, vni, into, {macFilter, vtepFilter});
}

void copyMacVtep(Vex::Ptr<VniStatusV2 const> const & status, Vex::Ptr<SwitchDir> const & target,
                 Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr const & mac) {
    SourceTarget into(target, source);
    copyMacVtep(*status, vni, into, mac);
}

void copyMultiPath(Vex::Ptr<VniStatusV2 const> const & status, Vex::Ptr<SwitchDir> const & target,
                   Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr const & mac) {
    SourceTarget into(target, source);
    copyMultiPath(*status, vni, into, mac);
}

void copyFloodList(Vex::Ptr<VniStatusV2 const> const & status, Vex::Ptr<SwitchDir> const & target,
                   Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr const & mac) {
    SourceTarget into(target, source);
    copyFloodList(*status, vni, into, mac);
}

} // namespace VxlanController::Cli
