#include "vxshow/state/Selection.h"

#include "Vex/Digits.h"

namespace vxshow::state {

bool Selection::takesEntry(std::string_view name) const {
    auto const number = Vex::readDecimal(name, Vxlan::Vni::max);
    return !number || vni.matches(Vxlan::Vni(*number));
}

} // namespace vxshow::state
