#include "vxshow/text/KnownMembers.h"

namespace vxshow::text {

std::size_t KnownMembers::unescapedPlace(JsonText const & name) const {
    auto const text = name.text();
    std::size_t index = 0;
    while (index < names_.size() && names_[index].text() != text) {
        ++index;
    }
    return index;
}

void KnownMembers::refuseWithout(std::size_t index, char const * object) const {
    throw Refusal{object, oneOf(names_.subspan(index, 1)) + " in it"};
}

} // namespace vxshow::text
