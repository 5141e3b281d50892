#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Vex/OrderedMap.h"
#include "Vex/Slot.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// A MAC address behind several VTEPs, each of which reaches it.
class MacVtepMultiPathV2 {
public:
    using VtepIps = Vex::OrderedMap<Vex::SetSlot<Nolt::IpAddr>>;

    MacVtepMultiPathV2() = default;

    explicit MacVtepMultiPathV2(Nolt::EthAddr macAddr) noexcept : macAddr_(macAddr) {}

    Nolt::EthAddr const & macAddr() const noexcept { return macAddr_; }

    /// The VTEPs in ascending order.
    VtepIps const & vtepIp() const noexcept { return vtepIp_; }

    /// Adds a VTEP, or overwrites the flag stored with it.
    void vtepIpIs(Nolt::IpAddr ip, bool member) & {
        vtepIp_.upsert(Vex::SetSlot<Nolt::IpAddr>(ip, member));
    }

    /// Compares the MAC address and the VTEPs with their flags.
    friend bool operator==(MacVtepMultiPathV2 const & a, MacVtepMultiPathV2 const & b) {
        return a.macAddr_ == b.macAddr_ && a.vtepIp_ == b.vtepIp_;
    }

    /// True for the zero MAC address without VTEPs, which means "not in the table".
    bool operator!() const noexcept { return macAddr_.isZero() && vtepIp_.empty(); }

private:
    Nolt::EthAddr macAddr_;
    VtepIps vtepIp_;
};

} // namespace VxlanController
