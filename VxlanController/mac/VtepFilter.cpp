#include "VxlanController/mac/VtepFilter.h"

#include <algorithm>

namespace VxlanController::Cli {

namespace {

bool isNoLimit(VtepList const * list) {
    return !list || list->vtep().empty();
}

template <class VtepIps>
bool anyVtepFiltered(VtepList const * list, VtepIps const & vteps) {
    return isNoLimit(list) || std::any_of(vteps.begin(), vteps.end(),
                                          [&](Nolt::IpAddr vtep) { return list->vtep(vtep); });
}

} // namespace

bool vtepIpFiltered(VtepList const * list, Nolt::IpAddr vtep) {
    return isNoLimit(list) || list->vtep(vtep);
}

bool macVtepIpFiltered(VtepList const * list, MacVtepV2 const & entry) {
    return vtepIpFiltered(list, entry.vtepIp());
}

bool macVtepMultiPathIpFiltered(VtepList const * list, MacVtepMultiPathV2 const & entry) {
    return anyVtepFiltered(list, entry.vtepIp());
}

bool macVtepFloodListIpFiltered(VtepList const * list, MacVtepFloodListV2 const & entry) {
    return anyVtepFiltered(list, entry.vtepIp());
}

} // namespace VxlanController::Cli
