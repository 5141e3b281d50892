#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenAddrWithMask.h"
#include "Vex/HashMap.h"
#include "Vex/Slot.h"
#include "state/PortVlanPairV2.h"

#include <utility>

namespace [[gnu::visibility("default")]] VxlanController {

/// One uplink port of a logical router: an external address, and the physical ports and
/// VLANs through which it is reached.
class LRIpUplinkPortV2 {
public:
    using PortVlans = Vex::HashMap2018<Vex::SetSlot<PortVlanPairV2>>;

    LRIpUplinkPortV2() = default;

    LRIpUplinkPortV2(Nolt::IpGenAddrWithMask const & ip, Nolt::EthAddr const & mac,
                     Nolt::IpGenAddr const & vtep) noexcept
        : ip_(ip), mac_(mac), vtep_(vtep) {}

    Nolt::IpGenAddrWithMask const & ip() const noexcept { return ip_; }

    Nolt::EthAddr const & mac() const noexcept { return mac_; }

    /// The VTEP behind which the ports are.
    Nolt::IpGenAddr const & vtep() const noexcept { return vtep_; }

    /// The ports in hash order, which is another one in each process.
    PortVlans const & portVlan() const noexcept { return portVlan_; }

    /// Replaces all ports.
    void portVlansAre(PortVlans pairs) & { portVlan_ = std::move(pairs); }

    /// Adds a port and a VLAN; adding an existing pair changes nothing.
    void portVlanIs(PortVlanPairV2 pair) & {
        portVlan_.upsert(Vex::SetSlot<PortVlanPairV2>(std::move(pair), true));
    }

private:
    Nolt::IpGenAddrWithMask ip_;
    Nolt::EthAddr mac_;
    Nolt::IpGenAddr vtep_;
    PortVlans portVlan_;
};

} // namespace VxlanController
