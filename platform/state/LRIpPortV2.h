#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenAddrWithMask.h"
#include "Vex/Strep.h"
#include "Vxlan/Vni.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// One IP port of a logical router: its address in a VNI, and where it is.
class LRIpPortV2 {
public:
    LRIpPortV2() = default;

    LRIpPortV2(Nolt::IpGenAddrWithMask const & ip, Vxlan::Vni vni, Nolt::EthAddr const & mac,
               Nolt::IpGenAddr const & vtep) noexcept
        : ip_(ip), vni_(vni), mac_(mac), vtep_(vtep) {}

    Nolt::IpGenAddrWithMask const & ip() const noexcept { return ip_; }

    Vxlan::Vni vni() const noexcept { return vni_; }

    Nolt::EthAddr const & mac() const noexcept { return mac_; }

    /// The VTEP that answers for the port.
    Nolt::IpGenAddr const & vtep() const noexcept { return vtep_; }

    bool operator==(LRIpPortV2 const & other) const = default;

private:
    Nolt::IpGenAddrWithMask ip_;
    Vxlan::Vni vni_;
    Nolt::EthAddr mac_;
    Nolt::IpGenAddr vtep_;
};

/// The string form in which generic tools show it; it is never read back.
inline Vex::String valueToStrep(LRIpPortV2 const & port) {
    Vex::String strep("Value('VxlanController::LRIpPortV2', ** {");
    strep += "'ip': " + Vex::valueToStrep(port.ip());
    strep += ", 'vni': " + Vex::valueToStrep(port.vni());
    strep += ", 'mac': " + Vex::valueToStrep(port.mac());
    strep += ", 'vtep': " + Vex::valueToStrep(port.vtep());
    strep += "})";
    return strep;
}

} // namespace VxlanController
