#include "state/SwitchInfoDir.h"

namespace [[gnu::visibility("default")]] VxlanController {

Vex::Ptr<SwitchInfo const> SwitchInfoDir::switchInfo(Vex::String const & switchId) const {
    auto const * slot = switchInfo_.find(switchId);
    return slot ? slot->element() : nullptr;
}

Vex::Ptr<VtepMap const> SwitchInfoDir::vtepMap(Nolt::IpGenAddr const & address) const {
    auto const * slot = vteps_.find(address);
    return slot ? slot->element() : nullptr;
}

Vex::Ptr<SwitchInfo> SwitchInfoDir::switchInfoIs(Vex::String const & switchId) {
    auto const make = [&] { return SwitchInfos::Slot(Vex::makePtr<SwitchInfo>(switchId)); };
    return switchInfo_.findOrInsert(switchId, make).element();
}

Vex::Ptr<VtepMap> SwitchInfoDir::vtepMapIs(Nolt::IpGenAddr const & address) {
    auto const make = [&] { return Vteps::Slot(Vex::makePtr<VtepMap>(address)); };
    return vteps_.findOrInsert(address, make).element();
}

} // namespace VxlanController
