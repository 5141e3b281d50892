#include "vxshow/state/snapshot/SwitchInfoReader.h"

#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonMembers.h"

#include <array>

namespace vxshow::state::snapshot {

namespace {

using VxlanController::SwitchInfo;
using VxlanController::SwitchInfoDir;
using VxlanController::VtepMap;

// A snapshot does not tell the VXLAN interface that is the other half of both keys.
Vex::String const noInterface;

void readSwitchesOf(text::JsonValue & value, VtepMap & vtep) {
    value.texts("a list of switch identifiers", "a switch identifier, a text",
                [&](text::JsonText const & text) {
                    VxlanController::SwitchIdVtepKeyPair key{Vex::String(text.text()), noInterface};
                    text::onlyNew(!vtep.switchId().has(key), text);
                    vtep.switchIdIs(std::move(key));
                });
}

void readVtep(text::JsonValue & value, VtepMap & vtep) {
    constexpr std::size_t active = 0;
    static constexpr std::array<text::MemberName, 2> names{"active", "switches"};
    text::Members members(names);
    auto const * const start = value.at();
    value.members("an object of \"active\" and \"switches\"",
                  [&](text::JsonText const & name, text::JsonValue & member) {
                      if (members.take(name) == active) {
                          vtep.activeIs(member.boolean());
                      } else {
                          readSwitchesOf(member, vtep);
                      }
                  });
    members.require(active, start);
}

} // namespace

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
    static constexpr std::array<text::MemberName, 1> names{"vteps"};
    auto & dir = directory();
    value.members("an object whose members are switch identifiers",
                  [&](text::JsonText const & key, text::JsonValue & entry) {
                      Vex::String const id(key.text());
                      text::onlyNew(!dir.switchInfo(id), key);
                      auto const switchInfo = dir.switchInfoIs(id);
                      text::Members members(names);
                      entry.members("an object of \"vteps\"",
                                    [&](text::JsonText const & name, text::JsonValue & list) {
                                        members.take(name);
                                        readVtepsOf(list, *switchInfo);
                                    });
                  });
}

void SwitchInfoReader::readVteps(text::JsonValue & value) {
    auto & dir = directory();
    value.members("an object whose members are IP addresses",
                  [&](text::JsonText const & key, text::JsonValue & entry) {
                      auto const address = text::readIp(key);
                      text::onlyNew(described_.insert(address).second, key);
                      readVtep(entry, *dir.vtepMapIs(address));
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

} // namespace vxshow::state::snapshot
