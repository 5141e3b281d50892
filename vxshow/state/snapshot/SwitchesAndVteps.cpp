#include "vxshow/state/snapshot/SwitchesAndVteps.h"

#include "vxshow/state/snapshot/Field.h"
#include "vxshow/state/snapshot/SortedByKey.h"
#include "vxshow/text/JsonAddresses.h"

namespace vxshow::state::snapshot {

namespace {

using VxlanController::SwitchIdVtepKeyPair;
using VxlanController::SwitchInfo;
using VxlanController::SwitchInfoDir;
using VxlanController::VtepMap;

// Both keys consist of an address or identifier and a VXLAN interface, which a snapshot does not
// record.
Vex::String const noInterface;

void requireNoInterface(Vex::String const & name) {
    if (!name.empty()) {
        throw Unwritable("a VTEP is named by its interface " + Vex::quoted(name) +
                         ", which a snapshot cannot express");
    }
}

void readSwitchesOf(text::JsonValue & value, VtepMap & vtep) {
    value.texts("a list of switch identifiers", "a switch identifier, a text",
                [&](text::JsonText const & text) {
                    SwitchIdVtepKeyPair key{Vex::String(text.text()), noInterface};
                    text::onlyNew(!vtep.switchId().has(key), text);
                    vtep.switchIdIs(std::move(key));
                });
}

void writeSwitchesOf(ValuesWriter & values, std::string_view name, VtepMap const & vtep) {
    if (vtep.switchId().empty()) {
        return;
    }
    values.list(name, [&] {
        forEachByKey(vtep.switchId(), &SwitchIdVtepKeyPair::switchId,
                     [&](SwitchIdVtepKeyPair const & key) {
                         requireNoInterface(key.vtepName);
                         values.element(key.switchId);
                     });
    });
}

void writeVtepsOf(ValuesWriter & values, std::string_view name, SwitchInfo const & info,
                  SwitchInfoDir const & dir) {
    std::vector<Nolt::IpGenAddr> vteps;
    for (auto at = info.vtepMap().begin(); at; ++at) {
        auto const & key = at.key();
        requireNoInterface(key.vtepName);
        auto const & vtep = at.slot().element();
        if (!vtep || dir.vtepMap(key.ip) != vtep) {
            throw Unwritable("the VTEP " + key.ip.stringValue() + " of the switch " +
                             Vex::quoted(info.switchId()) + " is not among the VTEPs");
        }
        vteps.push_back(key.ip);
    }
    values.addresses(name, vteps);
}

constexpr auto vtepObject = text::strictObject(
    "an object of \"active\" and \"switches\"",
    requiredMember(
        "active", [](text::JsonValue & value, VtepMap & into) { into.activeIs(value.boolean()); },
        [](ValuesWriter & values, std::string_view name, VtepMap const & from) {
            values.boolean(name, from.active());
        }),
    optionalMember("switches", readSwitchesOf, writeSwitchesOf));

} // namespace

/// The object of a switch, whose VTEPs go into the directory of the reader.
struct SwitchInfoReader::Format {
    static constexpr auto switchObject = text::strictObject(
        "an object of \"vteps\"", optionalMember(
                                      "vteps",
                                      [](text::JsonValue & value, SwitchInfoReader & reader,
                                         SwitchInfo & into) { reader.readVtepsOf(value, into); },
                                      writeVtepsOf));
};

SwitchInfoDir & SwitchInfoReader::directory() {
    if (!directory_) {
        directory_ = Vex::makePtr<SwitchInfoDir>();
    }
    return *directory_;
}

void SwitchInfoReader::readVtepsOf(text::JsonValue & value, SwitchInfo & switchInfo) {
    value.texts("a list of IP addresses", text::anIpAddress, [&](text::JsonText const & text) {
        auto const address = text::readIp(text);
        VxlanController::IpVtepKeyPair key{address, noInterface};
        text::onlyNew(!switchInfo.vtepMap().has(key), text);
        switchInfo.vtepMapIs(std::move(key), directory().vtepMapIs(address));
        named_.emplace(address, text.at());
    });
}

void SwitchInfoReader::readSwitches(text::JsonValue & value) {
    auto & dir = directory();
    value.members("an object whose members are switch identifiers",
                  [&](text::JsonText const & key, text::JsonValue & entry) {
                      Vex::String const id(key.text());
                      text::onlyNew(!dir.switchInfo(id), key);
                      auto const switchInfo = dir.switchInfoIs(id);
                      Format::switchObject.read(entry, *this, *switchInfo);
                  });
}

void SwitchInfoReader::readVteps(text::JsonValue & value) {
    auto & dir = directory();
    value.members("an object whose members are IP addresses",
                  [&](text::JsonText const & key, text::JsonValue & entry) {
                      auto const address = text::readIp(key);
                      text::onlyNew(described_.insert(address).second, key);
                      vtepObject.read(entry, *dir.vtepMapIs(address));
                  });
}

Vex::Ptr<SwitchInfoDir> SwitchInfoReader::finished() const {
    char const * first = nullptr;
    for (auto const & [address, place] : named_) {
        if (described_.count(address) == 0 && (!first || place < first)) {
            first = place;
        }
    }
    if (first) {
        throw text::Refusal{first, "an address that stands in \"vteps\""};
    }
    return directory_;
}

void writeSwitches(ValuesWriter & values, std::string_view key, SwitchInfoDir const & dir) {
    values.object(key, [&] {
        forEachByKey(dir.switchInfo(), &SwitchInfo::switchId, [&](SwitchInfo const & info) {
            values.object(writable(info.switchId()), [&] {
                writeMembers(SwitchInfoReader::Format::switchObject, values, info, dir);
            });
        });
    });
}

void writeVteps(ValuesWriter & values, std::string_view key, SwitchInfoDir const & dir) {
    values.object(key, [&] {
        forEachByKey(dir.vtepMap(), &VtepMap::address, [&](VtepMap const & vtep) {
            values.object(Spelled(vtep.address()), [&] { writeMembers(vtepObject, values, vtep); });
        });
    });
}

} // namespace vxshow::state::snapshot
