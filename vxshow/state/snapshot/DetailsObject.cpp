#include "vxshow/state/snapshot/DetailsObject.h"

#include "vxshow/state/snapshot/Field.h"

#include <string>

namespace vxshow::state::snapshot {

namespace {

template <class Owner>
constexpr auto requiredVni(Vxlan::Vni Owner::*vni) {
    return requiredMember(
        "vni",
        [vni](text::JsonValue & value, Owner & into) {
            into.*vni = Vxlan::Vni(value.number(Vxlan::Vni::max));
        },
        [vni](ValuesWriter & values, std::string_view name, Owner const & from) {
            values.number(name, (from.*vni).value());
        });
}

template <class Owner>
constexpr auto requiredText(text::MemberName name, std::string Owner::*text) {
    return requiredMember(
        name,
        [text](text::JsonValue & value, Owner & into) { into.*text = value.text("a text").text(); },
        [text](ValuesWriter & values, std::string_view written, Owner const & from) {
            values.text(written, from.*text);
        });
}

/// Left out if it is false.
template <class Owner>
constexpr auto optionalFlag(text::MemberName name, bool Owner::*flag) {
    return optionalMember(
        name, [flag](text::JsonValue & value, Owner & into) { into.*flag = value.boolean(); },
        [flag](ValuesWriter & values, std::string_view written, Owner const & from) {
            if (from.*flag) {
                values.boolean(written, true);
            }
        });
}

constexpr std::string_view aSegment =
    "an Ethernet segment, ten bytes such as 03:44:38:39:ff:ff:01:00:00:01";

void readSegment(text::JsonValue & value, MacDetails & into) {
    auto const text = value.text(aSegment);
    auto const segment = EthernetSegment::tryFromString(text.text());
    if (!segment) {
        text.refuse(std::string(aSegment));
    }
    into.segment = *segment;
}

constexpr auto macObject = text::strictObject(
    "an object of the details of a MAC address", requiredVni(&MacDetails::vni),
    requiredMac("mac", &MacDetails::mac), optionalFlag("duplicate", &MacDetails::isDuplicate),
    optionalFlag("sticky", &MacDetails::isSticky),
    optionalFlag("inactive", &MacDetails::isInactive),
    optionalMember("segment", readSegment,
                   [](ValuesWriter & values, std::string_view name, MacDetails const & from) {
                       if (!from.segment.isZero()) {
                           values.text(name, from.segment.stringValue());
                       }
                   }),
    optionalMember(
        "age",
        [](text::JsonValue & value, MacDetails & into) {
            into.age = value.number(std::numeric_limits<Vex::U32>::max());
        },
        [](ValuesWriter & values, std::string_view name, MacDetails const & from) {
            if (from.age) {
                values.number(name, *from.age);
            }
        }));

constexpr auto vniNameObject =
    text::strictObject("an object of \"vni\" and \"name\"", requiredVni(&VniName::vni),
                       requiredText("name", &VniName::name));

constexpr auto l3VniObject = text::strictObject(
    "an object of the details of an L3 VNI", requiredVni(&L3VniDetails::vni),
    requiredText("vrf", &L3VniDetails::vrf), optionalFlag("up", &L3VniDetails::isUp));

/// A list, left out if it is empty.
template <class Entry, class Object>
constexpr auto listMember(text::MemberName name, Object const & object,
                          std::vector<Entry> SourceDetails::*list) {
    return optionalMember(
        name,
        [&object, list](text::JsonValue & value, SourceDetails & into) {
            value.elements("a list of details", [&](text::JsonValue & one) {
                object.read(one, (into.*list).emplace_back());
            });
        },
        [&object, list](ValuesWriter & values, std::string_view written,
                        SourceDetails const & from) {
            if (!(from.*list).empty()) {
                values.list(written, [&] {
                    for (Entry const & entry : from.*list) {
                        values.objectElement([&] { writeMembers(object, values, entry); });
                    }
                });
            }
        });
}

constexpr auto sourceDetailsObject = text::strictObject(
    "an object of the details of a source", listMember("macs", macObject, &SourceDetails::macs),
    listMember("vniNames", vniNameObject, &SourceDetails::vniNames),
    listMember("l3Vnis", l3VniObject, &SourceDetails::l3Vnis));

} // namespace

Details readDetails(text::JsonValue & value) {
    Details details;
    value.members("an object whose members are sources",
                  [&](text::JsonText const & key, text::JsonValue & member) {
                      auto const [at, isNew] = details.try_emplace(std::string(key.text()));
                      text::onlyNew(isNew, key);
                      sourceDetailsObject.read(member, at->second);
                      at->second.settle();
                  });
    std::erase_if(details, [](auto const & entry) { return entry.second.isEmpty(); });
    return details;
}

void writeDetails(ValuesWriter & values, Details const & details) {
    for (auto const & entry : details) {
        values.object(writable(entry.first),
                      [&] { writeMembers(sourceDetailsObject, values, entry.second); });
    }
}

} // namespace vxshow::state::snapshot
