#include "vxshow/sources/fabric/Kinds.h"

#include "vxshow/sources/frr/FrrKind.h"
#include "vxshow/sources/ovsdb/OvsdbKind.h"

#include <array>

namespace vxshow::sources::fabric {

std::span<Kind const> kinds() {
    static std::array const all{ovsdb::kind(), frr::kind()};
    return all;
}

} // namespace vxshow::sources::fabric
