#include "VxlanController/arp/CopyArp.h"

#include <algorithm>
#include <vector>

namespace VxlanController::Cli {

/// The entries are sorted first, by pointers: the collection then grows at its end, and its
/// nodes lie in memory in the order in which they are printed and freed. In the hash order
/// of the state, a table of a million entries takes more than twice as long.
void copyArpEntries(VniTables const & status, ArpFilter const & filter, InterruptPoll & poll,
                    VxlanArpTable & into) {
    std::vector<ArpEntryV2 const *> taken;
    for (ArpEntryV2 const & entry : status.arpTable()) {
        poll.step();
        if (filter.takes(entry)) {
            taken.push_back(&entry);
        }
    }
    std::sort(taken.begin(), taken.end(), [&](ArpEntryV2 const * a, ArpEntryV2 const * b) {
        poll.step();
        return a->ipAddress() < b->ipAddress();
    });
    for (ArpEntryV2 const * entry : taken) {
        poll.step();
        into.arpEntryIs(entry->ipAddress(), entry->macAddress(), entry->preference(),
                        entry->changes());
    }
}

} // namespace VxlanController::Cli
