#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "VxlanController/command/ForEachEntity.h"
#include "VxlanController/command/ForEachSorted.h"
#include "VxlanController/command/InterruptPoll.h"
#include "state/VniTables.h"

namespace VxlanController::Cli {

/// The filters of a listing of ARP tables.
struct ArpFilter {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;  ///< the zero address matches every MAC
    Nolt::IpGenAddr ip; ///< the empty address matches every IP

    bool matches(ArpEntryV2 const & entry) const {
        return (mac.isZero() || mac == entry.macAddress()) &&
               (ip.isNone() || ip == entry.ipAddress());
    }
};

/// Adds the entries of `status` that `filter` matches. Raises `Vex::ReinstantiationError` if
/// `into` already holds one of their addresses with another MAC, preference or change count.
inline void copyArpEntries(VniTables const & status, ArpFilter const & filter, InterruptPoll & poll,
                           VxlanArpTable & into) {
    forEachSorted(
        status.arpTable(), &ArpEntryV2::ipAddress, poll,
        [&](ArpEntryV2 const & entry) { return filter.matches(entry); },
        [&](ArpEntryV2 const & entry) {
            into.arpEntryIs(entry.ipAddress(), entry.macAddress(), entry.preference(),
                            entry.changes());
        });
}

/// Copies the matching entries of one VNI to the table of that VNI in `into`, which is a
/// switch or the advertised set. A VNI that matches gets a table even if none of its entries
/// match.
template <class Target>
void copyArpTable(VniTables const & status, Vxlan::Vni vni, bool dotted, ArpFilter const & filter,
                  Target & into) {
    InterruptPoll poll;
    if (filter.vni.matches(vni)) {
        copyArpEntries(status, filter, poll, *into.arpTableIs(vni.stringValue(dotted)));
    }
}

} // namespace VxlanController::Cli
