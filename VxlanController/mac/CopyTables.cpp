#include "VxlanController/mac/CopyTables.h"

#include <utility>

namespace VxlanController::Cli {

void copyMacVtep(MacVtepV2 const & entry, VniStatus & into) {
    into.macVtepTableIs(MacVtep(entry.macAddr(), entry.vtepIp(), Quay::Seqno32(entry.moveCount())));
}

void copyMultiPath(MacVtepMultiPathV2 const & entry, VniStatus & into, InterruptPoll & poll) {
    MacVtepMultiPath copy(entry.macAddr());
    for (Nolt::IpAddr vtep : entry.vtepIp()) {
        poll.step();
        copy.vtepIpListIs(vtep, true);
    }
    into.macVtepMultiPathTableIs(std::move(copy));
}

void copyFloodList(MacVtepFloodListV2 const & entry, VniStatus & into, InterruptPoll & poll) {
    auto const copy = into.macVtepFloodListTableIs(entry.macAddr());
    for (Nolt::IpAddr vtep : entry.vtepIp()) {
        poll.step();
        copy->vtepIpFloodListIs(vtep, true);
    }
}

} // namespace VxlanController::Cli
