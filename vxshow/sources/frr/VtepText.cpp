#include "vxshow/sources/frr/VtepText.h"

#include "Nolt/IpGenAddr.h"
#include "vxshow/text/JsonAddresses.h"

namespace vxshow::sources::frr {

VtepText readVtepText(text::JsonText const & text) {
    if (auto const address = text::tryReadIpv4(text)) {
        return {address->isZero() ? VtepText::Kind::none : VtepText::Kind::ipv4, *address};
    }
    if (text.text() == "(null)") {
        return {VtepText::Kind::none};
    }
    auto const address = Nolt::IpGenAddr::tryFromString(text.text());
    bool const isIpv6 = address && address->family() == Nolt::Family::ipv6;
    return {isIpv6 ? VtepText::Kind::ipv6 : VtepText::Kind::other};
}

} // namespace vxshow::sources::frr
