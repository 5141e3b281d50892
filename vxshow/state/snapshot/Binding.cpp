#include "vxshow/state/snapshot/Binding.h"

#include "vxshow/state/snapshot/Field.h"
#include "vxshow/text/JsonAddresses.h"

namespace vxshow::state::snapshot {

namespace {

constexpr auto bindingObject =
    text::strictObject("an object of \"vtep\" and \"moves\"",
                       requiredMember(
                           "vtep",
                           [](text::JsonValue & value, Binding & into) {
                               into.vtep = text::readIpv4(value.text(text::anIpv4Address));
                           },
                           [](ValuesWriter & values, std::string_view name, Binding const & from) {
                               values.address(name, from.vtep);
                           }),
                       optionalNumber("moves", &Binding::moves));

} // namespace

Binding readBinding(text::JsonValue & value) {
    Binding binding;
    bindingObject.read(value, binding);
    return binding;
}

void writeBinding(ValuesWriter & values, std::string_view key, Binding const & binding) {
    values.object(key, [&] { writeMembers(bindingObject, values, binding); });
}

} // namespace vxshow::state::snapshot
