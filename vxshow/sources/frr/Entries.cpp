#include "vxshow/sources/frr/Entries.h"

#include "Vex/Digits.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::frr {

void leaveOut(Collector & join, Subjects about, Vxlan::Vni vni, std::string_view column,
              std::string_view text, std::string_view expected) {
    auto what = "VNI " + std::string(vni.stringValue()) + ": ";
    what.append(column).append(" ").append(text::shownInQuotes(text));
    join.leaveOut(about, what.append(", expected ").append(expected));
}

void leaveOutIpv6(Collector & join, Subjects about, Vxlan::Vni vni, std::string_view entry,
                  std::string_view address) {
    join.leaveOutIpv6(about, std::string(entry)
                                 .append(" in VNI ")
                                 .append(vni.stringValue())
                                 .append(" at ")
                                 .append(address));
}

std::optional<Vxlan::Vni> readVniKey(text::JsonText const & text, Subjects about,
                                     Collector & join) {
    if (auto const number = Vex::readDecimal(text.text(), Vxlan::Vni::max)) {
        return Vxlan::Vni(*number);
    }
    join.leaveOut(about,
                  "VNI " + text::shownInQuotes(text.text()) + ", expected one from 0 to 16777215");
    return std::nullopt;
}

std::size_t EntrySide::readSide(text::JsonValue & value) {
    // Made once: the text is for the error that each of many entries might have.
    static auto const expected = text::oneOf(sides);
    auto const text = value.text(expected);
    for (std::size_t index = 0; index < sides.size(); ++index) {
        if (sides[index].standsAt(text.content())) {
            return index;
        }
    }
    text.refuse(expected);
}

} // namespace vxshow::sources::frr
