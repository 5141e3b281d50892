#include "tests/unit/VxlanController/Samples.h"

#include "VxlanController/VxlanControllerCliModel.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>

using Vex::AnyValue;
using Vex::AnyValues;

namespace {

using Maker = std::function<AnyValue(unsigned which)>;

std::string letter(unsigned which) {
    return which == 0 ? "" : std::string(1, static_cast<char>('a' + which));
}

/// Parses samples 1 and 2 from text; sample 0 is the default value.
template <class T>
Maker read(char const * one, char const * two) {
    return [=](unsigned which) {
        return AnyValue(which == 0 ? T() : T::fromString(which == 1 ? one : two));
    };
}

template <class T>
Maker number() {
    return [](unsigned which) { return AnyValue(static_cast<T>(which)); };
}

template <class T>
Maker entity() {
    return
        [](unsigned which) { return which == 0 ? AnyValue(nullptr) : AnyValue(Vex::makePtr<T>()); };
}

/// Tables cannot be constructed, only opened, and stay open as long as their writer lives.
template <class Writer>
Maker table() {
    return [](unsigned which) {
        static Writer const writer{"sample"};
        return which == 0 ? AnyValue(nullptr) : AnyValue(writer.table());
    };
}

Nolt::IpGenAddrWithMask portAddress(unsigned which) {
    return sample("Nolt::IpGenAddrWithMask", which).as<Nolt::IpGenAddrWithMask>();
}

std::map<std::string, Maker, std::less<>> const & makers() {
    static std::map<std::string, Maker, std::less<>> const all{
        {"bool", [](unsigned which) { return AnyValue(which != 0); }},
        {"U8", number<Vex::U8>()},
        {"U32", number<Vex::U32>()},
        {"Vex::String", [](unsigned which) { return AnyValue(Vex::String(letter(which))); }},
        {"Vex::Name", [](unsigned which) { return AnyValue(Vex::Name(letter(which))); }},
        {"Nolt::EthAddr", read<Nolt::EthAddr>("02:00:00:00:00:01", "02:00:00:00:00:02")},
        {"Nolt::IpAddr", read<Nolt::IpAddr>("10.0.0.1", "10.0.0.2")},
        {"Nolt::IpGenAddr", read<Nolt::IpGenAddr>("10.0.0.1", "2001:db8::1")},
        {"Nolt::IpGenAddrWithMask", read<Nolt::IpGenAddrWithMask>("10.0.0.1/24", "2001:db8::1/64")},
        {"Nolt::IpGenPrefix", read<Nolt::IpGenPrefix>("10.0.0.0/24", "10.0.1.0/24")},
        {"Vxlan::Vni", read<Vxlan::Vni>("9", "10")},
        {"Vxlan::VniOrNone", read<Vxlan::VniOrNone>("9", "10")},
        {"Bridging::VlanIdOrNone", read<Bridging::VlanIdOrNone>("9", "10")},
        {"Quay::Seqno32", read<Quay::Seqno32>("9", "10")},
        {"VxlanController::LRIpPortV2",
         [](unsigned which) {
             return AnyValue(VxlanController::LRIpPortV2(portAddress(which), Vxlan::Vni(which),
                                                         Nolt::EthAddr(), Nolt::IpGenAddr()));
         }},
        {"Vex::Dir", entity<Vex::Dir>()},
        {"VxlanController::VniStatusDirV2", entity<VxlanController::VniStatusDirV2>()},
        {"VxlanController::SwitchInfoDir", entity<VxlanController::SwitchInfoDir>()},
        {"Statestore::PublishStatus", entity<Statestore::PublishStatus>()},
        {"VcsEvpn::HostTable", table<VcsEvpn::HostTableWriter>()},
        {"VcsEvpn::FloodTable", table<VcsEvpn::FloodTableWriter>()},
    };
    return all;
}

} // namespace

AnyValues sampleArguments(Vex::Type const & type, unsigned which) {
    AnyValues arguments;
    for (auto const name : type.constructorArguments) {
        arguments.push_back(sample(type.attribute(name)->type, which));
    }
    return arguments;
}

AnyValue sample(std::string_view type, unsigned which) {
    if (auto const * model = Vex::typeNode(type)) {
        bool const null = model->kind == Vex::Type::Kind::entity && which == 0;
        return null ? AnyValue(nullptr)
                    : model->operations->construct(sampleArguments(*model, which));
    }
    auto const found = makers().find(type);
    if (found == makers().end()) {
        ADD_FAILURE() << "no sample of a " << type;
        return {};
    }
    return found->second(which);
}

AnyValue withOtherContent(std::string_view type, AnyValue value) {
    auto const * model = Vex::typeNode(type);
    if (!model) {
        return VxlanController::LRIpPortV2(value.as<VxlanController::LRIpPortV2>().ip(),
                                           Vxlan::Vni(99), Nolt::EthAddr(), Nolt::IpGenAddr());
    }
    for (auto const & attribute : model->attributes) {
        if (attribute.kind == Vex::AttributeKind::plain) {
            auto const before = model->operations->get(value, attribute.number);
            auto const one = sample(attribute.type, 1);
            model->operations->set(value, attribute.number,
                                   before == one ? sample(attribute.type, 2) : one);
            return value;
        }
        if (attribute.kind == Vex::AttributeKind::setCollection) {
            model->operations->insert(value, attribute.number, {sample(attribute.key, 1), true});
            return value;
        }
    }
    ADD_FAILURE() << type << " has nothing but its key";
    return value;
}
