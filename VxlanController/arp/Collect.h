#pragma once

#include "VxlanController/arp/CopyArp.h"
#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"

#include <string>

/// The collection step of the ARP commands. Their tables are no attribute of the command, so
/// that a front end that wants the tables rather than a listing of them collects them with
/// these functions.
namespace VxlanController::Cli {

inline ArpFilter arpFilterOf(auto const & command) {
    return {command.vniFilter(), command.macFilter(), command.ipFilter()};
}

/// Adds to `into` what the command lists. A switch that matches the switch filter is listed
/// even if nothing else about it matches. Raises `outfmt::SigIntException` on the user's
/// interrupt, and what `copyArpEntries` raises.
inline void collectArp(ArpReceived const & command, VxlanVtepSet & into) {
    auto const filter = arpFilterOf(command);
    forEachEntity<VniStatusDirV2>(
        command.switches(), [&](Vex::Name const & name, VniStatusDirV2 const & vnis) {
            if (!command.switchFilter().empty() && name.stringValue() != command.switchFilter()) {
                return;
            }
            auto const vtep = into.vtepIs(name.stringValue());
            for (VniStatusV2 const & status : vnis.vniStatusV2()) {
                copyArpTable(status, status.vni(), command.vniDotted(), filter, *vtep);
            }
        });
}

/// Parses the name of a directory entry as a VNI, the way `std::stoi` reads a number. Raises
/// the exceptions of `std::stoi` for a name that is not a 32-bit number, and `Vex::RangeError`
/// for a number that is not a VNI. A negative number counts as unsigned, so it is too large.
inline Vxlan::Vni vniNamed(Vex::Name const & name) {
    return Vxlan::Vni(static_cast<Vex::U32>(std::stoi(name.stringValue())));
}

/// Adds to `into` what the command lists. Several names can denote one VNI, such as "10" and
/// "010"; their entries share its table. Raises what the function above raises, and what
/// `vniNamed` raises.
inline void collectArp(ArpAdvertised const & command, VxlanFdbSet & into) {
    auto const filter = arpFilterOf(command);
    forEachEntity<VniFdbStatusV2>(
        command.vniStatusDir(), [&](Vex::Name const & name, VniFdbStatusV2 const & status) {
            copyArpTable(status, vniNamed(name), command.vniDotted(), filter, into);
        });
}

} // namespace VxlanController::Cli
