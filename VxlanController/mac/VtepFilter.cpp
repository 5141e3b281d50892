#include "VxlanController/mac/VtepFilter.h"

#include <algorithm>

namespace VxlanController::Cli {

namespace {

bool isNoLimit(Vex::Ptr<VtepList const> const & list) {
    return !list || list->vtep().empty();
}

template <class VtepIps>
bool anyVtepFiltered(Vex::Ptr<VtepList const> const & list, VtepIps const & vteps) {
    return isNoLimit(list) || std::any_of(vteps.begin(), vteps.end(),
                                          [&](Nolt::IpAddr vtep) { return list->vtep(vtep); });
}

} // namespace

bool vtepIpFiltered(Vex::Ptr<VtepList const> const & list, Nolt::IpAddr vtep) {
    return isNoLimit(list) || list->vtep(vtep);
}

bool macVtepIpFiltered(Vex::Ptr<VtepList const> const & list, MacVtepV2 const & entry) {
    return vtepIpFiltered(list, entry.vtepIp());
}

bool macVtepMultiPathIpFiltered(Vex::Ptr<VtepList const> const & list,
                                MacVtepMultiPathV2 const & entry) {
    return anyVtepFiltered(list, entry.vtepIp());
}

bool macVtepFloodListIpFiltered(Vex::Ptr<VtepList const> const & list,
                                MacVtepFloodListV2 const & entry) {
    return anyVtepFiltered(list, entry.vtepIp());
}

bool macVtepIpFiltered(Vex::Ptr<VtepList const> const & list, Nolt::EthAddr const & mac,
                       Vex::Ptr<VniTables const> const & status) {
    return macVtepIpFiltered(list, status->macVtepTable(mac));
}

bool macVtepMultiPathIpFiltered(Vex::Ptr<VtepList const> const & list, Nolt::EthAddr const & mac,
                                Vex::Ptr<VniTables const> const & status) {
    return macVtepMultiPathIpFiltered(list, status->macVtepMultiPathTable(mac));
}

bool macVtepFloodListIpFiltered(Vex::Ptr<VtepList const> const & list, Nolt::EthAddr const & mac,
                                Vex::Ptr<VniTables const> const & status) {
    auto const entry = status->macVtepFloodListTable(mac);
    return entry ? macVtepFloodListIpFiltered(list, *entry) : isNoLimit(list);
}

} // namespace VxlanController::Cli
