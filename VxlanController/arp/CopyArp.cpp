#include "VxlanController/arp/CopyArp.h"

#include "VxlanController/command/ForEachSorted.h"

namespace VxlanController::Cli {

void copyArpEntries(VniTables const & status, ArpFilter const & filter, InterruptPoll & poll,
                    VxlanArpTable & into) {
    forEachSorted(
        status.arpTable(), &ArpEntryV2::ipAddress, poll,
        [&](ArpEntryV2 const & entry) { return filter.matches(entry); },
        [&](ArpEntryV2 const & entry) {
            into.arpEntryIs(entry.ipAddress(), entry.macAddress(), entry.preference(),
                            entry.changes());
        });
}

} // namespace VxlanController::Cli
