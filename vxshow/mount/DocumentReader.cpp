#include "vxshow/mount/DocumentReader.h"

#include "vxshow/mount/EvpnReader.h"
#include "vxshow/mount/Members.h"
#include "vxshow/mount/TablesReader.h"

#include <array>

namespace vxshow {

namespace {

namespace Cli = VxlanController::Cli;

constexpr std::string_view formatName = "vxlan-controller-state";
constexpr Vex::U32 formatVersion = 1;

Vex::Ptr<Vex::Dir> readSwitches(JsonValue value) {
    auto dir = Vex::makePtr<Vex::Dir>();
    value.members("an object whose members are switches",
                  [&](JsonText const & key, JsonValue member) {
                      Vex::Name const name(key.text());
                      if (dir->entryState(name)) {
                          key.refuseAgain();
                      }
                      dir->entityIs(name, readVniStatusDir(member));
                  });
    return dir;
}

Vex::Ptr<Cli::VniStatusDirList> readSources(JsonValue value) {
    static constexpr std::array<std::string_view, 2> names{"HSC", "QVX"};
    Members members(names);
    auto list = Cli::vniStatusDirListFactory();
    value.members("an object of sources", [&](JsonText const & name, JsonValue member) {
        Vex::Name const source(names[members.take(name)]);
        list->vniStatusDirIs(source, readVniStatusDir(member));
    });
    return list;
}

Vex::Ptr<Cli::HostFloodTableList> readEvpnSources(JsonValue value) {
    static constexpr std::array<std::string_view, 1> names{"EVPN"};
    Members members(names);
    auto list = Cli::hostFloodTableListFactory();
    value.members("an object of sources", [&](JsonText const & name, JsonValue member) {
        Vex::Name const source(names[members.take(name)]);
        list->hostFloodTableIs(source, readEvpn(member));
    });
    return list;
}

Mount::Received readReceived(JsonValue value) {
    enum Name : std::size_t { switches, sources, evpn };

    static constexpr std::array<std::string_view, 3> names{"switches", "sources", "evpn"};
    Members members(names);
    Mount::Received received;
    value.members("an object of published state", [&](JsonText const & name, JsonValue member) {
        switch (members.take(name)) {
        case switches:
            received.switches = readSwitches(member);
            break;
        case sources:
            received.sources = readSources(member);
            break;
        default:
            received.evpn = readEvpnSources(member);
        }
    });
    return received;
}

void checkFormat(JsonValue value) {
    auto const expected = oneOf(std::array{formatName});
    auto const text = value.text(expected);
    if (text.text() != formatName) {
        text.refuse(expected);
    }
}

} // namespace

Mount readDocument(JsonReader & json) {
    enum Name : std::size_t { format, version, received };

    static constexpr std::array<std::string_view, 3> names{"format", "version", "received"};
    Members members(names);
    Mount mount;
    auto const * const start = json.at();
    json.document([&](JsonText const & name, JsonValue member) {
        switch (members.take(name)) {
        case format:
            checkFormat(member);
            break;
        case version:
            member.numberIs(formatVersion);
            break;
        default:
            mount.received = readReceived(member);
        }
    });
    members.require(format, start);
    members.require(version, start);
    return mount;
}

} // namespace vxshow
