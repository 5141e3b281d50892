#include "VxlanController/mac/VtepFilter.h"

#include <algorithm>

namespace VxlanController::Cli {

namespace {

template <class VtepIps>
bool anyVtepFiltered(VtepList const & list, VtepIps const & vteps) {
    return list.vtep().empty() || std::any_of(vteps.begin(), vteps.end(),
                                              [&](Nolt::IpAddr vtep) { return list.vtep(vtep); });
}

} // namespace

bool vtepIpFiltered(VtepList const & list, Nolt::IpAddr vtep) {
    return list.vtep().empty() || list.vtep(vtep);
}

bool macVtepIpFiltered(VtepList const & list, MacVtepV2 const & entry) {
    return vtepIpFiltered(list, entry.vtepIp());
}

bool macVtepMultiPathIpFiltered(VtepList const & list, MacVtepMultiPathV2 const & entry) {
    return anyVtepFiltered(list, entry.vtepIp());
}

bool macVtepFloodListIpFiltered(VtepList const & list, MacVtepFloodListV2 const & entry) {
    return anyVtepFiltered(list, entry.vtepIp());
}

} // namespace VxlanController::Cli
