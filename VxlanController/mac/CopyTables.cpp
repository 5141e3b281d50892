#include "VxlanController/mac/CopyTables.h"

namespace VxlanController::Cli {

void copyMacVtep(MacVtepV2 const & entry, VniStatus & into) {
    into.macVtepTableIs(MacVtep(entry.macAddr(), entry.vtepIp(), Quay::Seqno32(entry.moveCount())));
}

void copyMultiPath(MacVtepMultiPathV2 const & entry, VniStatus & into) {
    MacVtepMultiPath copy(entry.macAddr());
    for (Nolt::IpAddr vtep : entry.vtepIp()) {
        copy.vtepIpListIs(vtep, true);
    }
    into.macVtepMultiPathTableIs(std::move(copy));
}

void copyFloodList(MacVtepFloodListV2 const & entry, VniStatus & into) {
    auto const copy = into.macVtepFloodListTableIs(entry.macAddr());
    for (Nolt::IpAddr vtep : entry.vtepIp()) {
        copy->vtepIpFloodListIs(vtep, true);
    }
}

} // namespace VxlanController::Cli
