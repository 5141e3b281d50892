#include "vxshow/mount/Members.h"

namespace vxshow {

std::string oneOf(std::span<std::string_view const> names) {
    std::string list;
    for (std::size_t index = 0; index < names.size(); ++index) {
        bool const last = index + 1 == names.size();
        list.append(index == 0 ? "" : last ? " or " : ", ");
        list.append("\"").append(names[index]).append("\"");
    }
    return list;
}

void Members::require(std::size_t index, char const * object) const {
    if (!has(index)) {
        throw Refusal{object, oneOf(names_.subspan(index, 1)) + " in it"};
    }
}

} // namespace vxshow
