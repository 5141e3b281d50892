#include "vxshow/text/JsonMembers.h"

namespace vxshow::text {

bool MemberName::restStandsAt(char const * content) const noexcept {
    // If the name in the document is shorter, its closing quote is the first difference.
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

std::size_t indexOfEscaped(JsonText const & name, std::span<MemberName const> names) {
    auto const text = name.text();
    std::size_t index = 0;
    while (index < names.size() && names[index].text() != text) {
        ++index;
    }
    return index;
}

void refuseWithout(MemberName name, char const * object) {
    throw Refusal{object, oneOf({&name, 1}) + " in it"};
}

void refuseWithout(std::span<MemberName const> names, Vex::U32 missing, char const * object) {
    refuseWithout(names[static_cast<std::size_t>(std::countr_zero(missing))], object);
}

} // namespace vxshow::text
