#include "vxshow/text/JsonMembers.h"

namespace vxshow::text {

bool MemberName::restStandsAt(char const * content) const noexcept {
    // Where the name ends before the text does, the first difference is its quote.
    return std::strncmp(content, text_.data(), text_.size()) == 0 && content[text_.size()] == '"';
}

std::string oneOf(std::span<MemberName const> names) {
    std::string list;
    for (std::size_t index = 0; index < names.size(); ++index) {
        bool const last = index + 1 == names.size();
        list.append(index == 0 ? "" : last ? " or " : ", ");
        list.append("\"").append(names[index].text()).append("\"");
    }
    return list;
}

std::size_t Members::unescapedPlace(JsonText const & name) const {
    auto const text = name.text();
    for (std::size_t index = 0; index < names_.size(); ++index) {
        if (text == names_[index].text()) {
            return index;
        }
    }
    name.refuse(oneOf(names_));
}

void Members::require(std::size_t index, char const * object) const {
    if (!has(index)) {
        throw Refusal{object, oneOf(names_.subspan(index, 1)) + " in it"};
    }
}

} // namespace vxshow::text
