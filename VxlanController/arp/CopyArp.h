#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "VxlanController/command/ForEachEntity.h"
#include "VxlanController/command/InterruptPoll.h"
#include "state/VniTables.h"

namespace VxlanController::Cli {

/// What a listing of ARP tables is limited to.
struct ArpFilter {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;  ///< the zero address: every MAC
    Nolt::IpGenAddr ip; ///< the empty address: every IP

    bool takesVni(Vxlan::Vni candidate) const { return vni.isNone() || vni == candidate; }

    bool takes(ArpEntryV2 const & entry) const {
        return (mac.isZero() || mac == entry.macAddress()) &&
               (ip.isNone() || ip == entry.ipAddress());
    }
};

/// Adds the entries of `status` that `filter` takes. Raises `Vex::ReinstantiationError` when
/// `into` holds one of their addresses with another MAC, preference or change count.
void copyArpEntries(VniTables const & status, ArpFilter const & filter, InterruptPoll & poll,
                    VxlanArpTable & into);

/// Copies what `filter` takes of one VNI to the table under its text in `into`, a switch or
/// the advertised set. A VNI that the filter takes has its table even when no entry of it
/// is taken.
template <class Target>
void copyArpTable(VniTables const & status, Vxlan::Vni vni, bool dotted, ArpFilter const & filter,
                  Target & into) {
    InterruptPoll poll;
    if (filter.takesVni(vni)) {
        copyArpEntries(status, filter, poll, *into.arpTableIs(vni.stringValue(dotted)));
    }
}

} // namespace VxlanController::Cli
