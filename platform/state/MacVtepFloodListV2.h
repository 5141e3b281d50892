#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vex/HashMap.h"
#include "Vex/Slot.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// Which of the listed VTEPs get a copy of a frame.
enum class FloodListType : Vex::U8 { sendToAll, sendToAny };

/// The VTEPs to which frames for one MAC address are flooded; under the zero MAC address,
/// all broadcast, unknown-unicast and multicast traffic of a VNI.
class MacVtepFloodListV2 : public Vex::Tracked<MacVtepFloodListV2, Vex::Entity> {
public:
    static constexpr char const * vexTypeName = "VxlanController::MacVtepFloodListV2";
    using VtepIps = Vex::HashMap2018<Vex::SetSlot<Nolt::IpAddr>>;

    explicit MacVtepFloodListV2(Nolt::EthAddr macAddr,
                                FloodListType listType = FloodListType::sendToAll) noexcept
        : macAddr_(macAddr), listType_(listType) {}

    Nolt::EthAddr const & macAddr() const noexcept { return macAddr_; }

    FloodListType listType() const noexcept { return listType_; }

    /// The VTEPs in hash order.
    VtepIps const & vtepIp() const noexcept { return vtepIp_; }

    /// Adds a VTEP, or overwrites the flag stored with it.
    void vtepIpIs(Nolt::IpAddr ip, bool member) {
        vtepIp_.upsert(Vex::SetSlot<Nolt::IpAddr>(ip, member));
    }

private:
    Nolt::EthAddr macAddr_;
    FloodListType listType_;
    VtepIps vtepIp_;
};

} // namespace VxlanController
