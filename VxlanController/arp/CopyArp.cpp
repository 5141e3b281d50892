#include "VxlanController/arp/CopyArp.h"

#include "VxlanController/command/SortedEntries.h"

namespace VxlanController::Cli {

void copyArpEntries(VniTables const & status, ArpFilter const & filter, InterruptPoll & poll,
                    VxlanArpTable & into) {
    auto const taken = [&](ArpEntryV2 const & entry) { return filter.takes(entry); };
    for (auto const * entry :
         sortedEntries(status.arpTable(), &ArpEntryV2::ipAddress, poll, taken)) {
        poll.step();
        into.arpEntryIs(entry->ipAddress(), entry->macAddress(), entry->preference(),
                        entry->changes());
    }
}

} // namespace VxlanController::Cli
