#pragma once

#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonFields.h"

#include <limits>
#include <string_view>

/// The members of a snapshot's objects. Each is described once, both how its value is read and how
/// it is written, so that what is written can be read.
namespace vxshow::state::snapshot {

/// One member. `read(JsonValue &, into...)` takes its value.
/// `write(ValuesWriter &, std::string_view name, from...)` writes the member, or nothing when
/// there is nothing to say.
template <class Read, class Write>
struct Field {
    text::MemberName name;
    bool isRequired;
    Read read;
    Write write;
};

template <class Read, class Write>
constexpr Field<Read, Write> requiredMember(text::MemberName name, Read read, Write write) {
    return {name, true, read, write};
}

template <class Read, class Write>
constexpr Field<Read, Write> optionalMember(text::MemberName name, Read read, Write write) {
    return {name, false, read, write};
}

/// A number from 0 to the maximum of its type, left out if it is 0.
template <class Owner, class Number>
constexpr auto optionalNumber(text::MemberName name, Number Owner::*number) {
    return optionalMember(
        name,
        [number](text::JsonValue & value, Owner & into) {
            into.*number = static_cast<Number>(value.number(std::numeric_limits<Number>::max()));
        },
        [number](ValuesWriter & values, std::string_view written, Owner const & from) {
            if (from.*number != 0) {
                values.number(written, from.*number);
            }
        });
}

/// An Ethernet address.
template <class Owner>
constexpr auto requiredMac(text::MemberName name, Nolt::EthAddr Owner::*mac) {
    return requiredMember(
        name,
        [mac](text::JsonValue & value, Owner & into) {
            into.*mac = text::readMac(value.text(text::anEthernetAddress));
        },
        [mac](ValuesWriter & values, std::string_view written, Owner const & from) {
            values.address(written, from.*mac);
        });
}

/// Writes the members that `object` describes into the open object.
template <class Object, class... From>
void writeMembers(Object const & object, ValuesWriter & values, From const &... from) {
    object.eachField([&](auto const & field) { field.write(values, field.name.text(), from...); });
}

} // namespace vxshow::state::snapshot
