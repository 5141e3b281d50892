#include "vxshow/sources/SystemId.h"

namespace vxshow::sources {

Nolt::EthAddr readSystemId(text::TomlField const & field) {
    constexpr auto expected = "an Ethernet address such as 00:1c:73:0a:0b:0c, 00-1c-73-0a-0b-0c "
                              "or 001c.730a.0b0c";
    if (auto const address = Nolt::EthAddr::tryFromString(field.text(expected))) {
        return *address;
    }
    field.refuse(expected);
}

} // namespace vxshow::sources
