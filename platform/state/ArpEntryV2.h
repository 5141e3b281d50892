#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Vex/Types.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// One IP-to-MAC binding as the controller publishes it.
class ArpEntryV2 {
public:
    ArpEntryV2() = default;

    ArpEntryV2(Nolt::IpGenAddr const & ipAddress, Nolt::EthAddr macAddress, Vex::U8 preference,
               Vex::U32 changes) noexcept
        : ipAddress_(ipAddress), macAddress_(macAddress), preference_(preference),
          changes_(changes) {}

    Nolt::IpGenAddr const & ipAddress() const noexcept { return ipAddress_; }

    Nolt::EthAddr const & macAddress() const noexcept { return macAddress_; }

    /// Decides between several claims to the address; the highest preference wins.
    Vex::U8 preference() const noexcept { return preference_; }

    /// How often the binding has changed.
    Vex::U32 changes() const noexcept { return changes_; }

    bool operator==(ArpEntryV2 const & other) const = default;

private:
    Nolt::IpGenAddr ipAddress_;
    Nolt::EthAddr macAddress_;
    Vex::U8 preference_ = 0;
    Vex::U32 changes_ = 0;
};

} // namespace VxlanController
