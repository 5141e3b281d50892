#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Vex/Types.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// One unicast MAC address as the controller publishes it: where it is and how often it
/// has moved. The default, all fields zero, means "not in the table".
class MacVtepV2 {
public:
    MacVtepV2() = default;

    MacVtepV2(Nolt::EthAddr macAddr, Nolt::IpAddr vtepIp, Vex::U32 moveCount) noexcept
        : macAddr_(macAddr), vtepIp_(vtepIp), moveCount_(moveCount) {}

    Nolt::EthAddr const & macAddr() const noexcept { return macAddr_; }

    /// The VTEP behind which the address is.
    Nolt::IpAddr vtepIp() const noexcept { return vtepIp_; }

    /// Moves between VTEPs since the address was first learned.
    Vex::U32 moveCount() const noexcept { return moveCount_; }

    bool operator==(MacVtepV2 const & other) const = default;

private:
    Nolt::EthAddr macAddr_;
    Nolt::IpAddr vtepIp_;
    Vex::U32 moveCount_ = 0;
};

} // namespace VxlanController
