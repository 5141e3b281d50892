#include "VxlanController/mac/CopyTables.h"

#include <utility>

namespace VxlanController::Cli {

void insertMacVtep(MacVtepV2 const & entry, VniStatus & into) {
    into.macVtepTableIs(MacVtep(entry.macAddr(), entry.vtepIp(), Quay::Seqno32(entry.moveCount())));
}

void insertMultiPath(Nolt::EthAddr const & mac, MacVtepMultiPathV2 const & entry, VniStatus & into,
                     InterruptPoll & poll) {
    MacVtepMultiPath copy(mac);
    for (Nolt::IpAddr vtep : entry.vtepIp()) {
        poll.step();
        copy.vtepIpListIs(vtep, true);
    }
    into.macVtepMultiPathTableIs(std::move(copy));
}

void insertFloodList(MacVtepFloodListV2 const & entry, VniStatus & into, InterruptPoll & poll) {
    auto const copy = into.macVtepFloodListTableIs(entry.macAddr());
    for (Nolt::IpAddr vtep : entry.vtepIp()) {
        poll.step();
        copy->vtepIpFloodListIs(vtep, true);
    }
}

} // namespace VxlanController::Cli
