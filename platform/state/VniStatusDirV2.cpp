#include "state/VniStatusDirV2.h"

namespace [[gnu::visibility("default")]] VxlanController {

Vex::Ptr<VniStatusV2 const> VniStatusDirV2::vniStatusV2(Vxlan::Vni vni) const {
    auto const * slot = vniStatusV2_.find(vni);
    return slot ? slot->element() : nullptr;
}

Vex::Ptr<VniStatusV2> VniStatusDirV2::vniStatusV2Is(Vxlan::Vni vni) {
    return vniStatusV2_
        .findOrInsert(vni, [&] { return VniStatuses::Slot(Vex::makePtr<VniStatusV2>(vni)); })
        .element();
}

} // namespace VxlanController
