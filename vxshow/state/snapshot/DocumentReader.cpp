#include "vxshow/state/snapshot/DocumentReader.h"

#include "state/VniFdbStatusV2.h"
#include "vxshow/state/snapshot/DirectoryReader.h"
#include "vxshow/state/snapshot/EvpnReader.h"
#include "vxshow/state/snapshot/RoutersReader.h"
#include "vxshow/state/snapshot/TablesReader.h"
#include "vxshow/text/JsonMembers.h"

#include <array>
#include <span>

namespace vxshow {

namespace {

namespace Cli = VxlanController::Cli;

constexpr std::string_view formatName = "vxlan-controller-state";
constexpr Vex::U32 formatVersion = 1;

/// What is read of the document's parts depends on this.
struct Wanted {
    explicit Wanted(Selection const & wanted) : selection(wanted), tables(wanted) {}

    Selection const & selection;
    TablesReader tables;
};

Vex::Ptr<Vex::Dir> readSwitches(JsonValue & value, Wanted & wanted) {
    auto const & selection = wanted.selection;
    return readDirectory(value, "an object whose members are switches",
                         [&](Vex::Name const & name, JsonValue & vnis) {
                             bool const selected =
                                 selection.received && selection.takesSwitch(name.stringValue());
                             return wanted.tables.readVniStatusDir(vnis, selected);
                         });
}

Vex::Ptr<Vex::Dir> readVniEntries(JsonValue & value, Wanted & wanted) {
    auto const & selection = wanted.selection;
    return readDirectory(value, "an object whose members are per-VNI entries",
                         [&](Vex::Name const & name, JsonValue & tables) {
                             auto entry = Vex::makePtr<VxlanController::VniFdbStatusV2>();
                             if (selection.advertised && selection.takesEntry(name.stringValue())) {
                                 wanted.tables.read(tables, *entry);
                             } else {
                                 wanted.tables.check(tables);
                             }
                             return entry;
                         });
}

/// The sources that may stand in one part of the document.
using SourceNames = std::span<MemberName const>;

Vex::Ptr<Cli::VniStatusDirList> readSources(JsonValue & value, SourceNames names, bool selected,
                                            Wanted & wanted) {
    Members members(names);
    auto list = Cli::vniStatusDirListFactory();
    value.members("an object of sources", [&](JsonText const & name, JsonValue & member) {
        Vex::Name const source(names[members.take(name)].text());
        list->vniStatusDirIs(source, wanted.tables.readVniStatusDir(member, selected));
    });
    return list;
}

Vex::Ptr<Cli::HostFloodTableList> readEvpnSources(JsonValue & value) {
    static constexpr std::array<MemberName, 1> names{"EVPN"};
    Members members(names);
    auto list = Cli::hostFloodTableListFactory();
    value.members("an object of sources", [&](JsonText const & name, JsonValue & member) {
        Vex::Name const source(names[members.take(name)].text());
        list->hostFloodTableIs(source, readEvpn(member));
    });
    return list;
}

/// What is received or what is advertised: a directory, and the sources beside it.
template <class State>
State readState(JsonValue & value, std::string_view directoryName,
                Vex::Ptr<Vex::Dir> (*readDirectory)(JsonValue &, Wanted &),
                Vex::Ptr<Vex::Dir> State::*directory, SourceNames sourceNames, bool selected,
                Wanted & wanted) {
    enum Name : std::size_t { inDirectory, sources, evpn };

    std::array<MemberName, 3> const names{directoryName, "sources", "evpn"};
    Members members(names);
    State state;
    value.members("an object of published state", [&](JsonText const & name, JsonValue & member) {
        switch (members.take(name)) {
        case inDirectory:
            state.*directory = readDirectory(member, wanted);
            break;
        case sources:
            state.sources = readSources(member, sourceNames, selected, wanted);
            break;
        default:
            state.evpn = readEvpnSources(member);
        }
    });
    return state;
}

Mount::Received readReceived(JsonValue & value, Wanted & wanted) {
    static constexpr std::array<MemberName, 2> sources{"HSC", "QVX"};
    return readState(value, "switches", readSwitches, &Mount::Received::switches, sources,
                     wanted.selection.received, wanted);
}

Mount::Advertised readAdvertised(JsonValue & value, Wanted & wanted) {
    static constexpr std::array<MemberName, 1> sources{"HSC"};
    return readState(value, "vnis", readVniEntries, &Mount::Advertised::vnis, sources,
                     wanted.selection.advertised, wanted);
}

void checkFormat(JsonValue & value) {
    auto const expected = oneOf(std::array{MemberName(formatName)});
    auto const text = value.text(expected);
    if (text.text() != formatName) {
        text.refuse(expected);
    }
}

} // namespace

Mount readDocument(JsonReader & json, Selection const & selection) {
    enum Name : std::size_t { format, version, received, advertised, routers };

    static constexpr std::array<MemberName, 5> names{"format", "version", "received", "advertised",
                                                     "routers"};
    Members members(names);
    Mount mount;
    Wanted wanted(selection);
    auto const * const start = json.at();
    json.document([&](JsonText const & name, JsonValue & member) {
        switch (members.take(name)) {
        case format:
            checkFormat(member);
            break;
        case version:
            member.numberIs(formatVersion);
            break;
        case received:
            mount.received = readReceived(member, wanted);
            break;
        case advertised:
            mount.advertised = readAdvertised(member, wanted);
            break;
        default:
            mount.routers = readRouters(member);
        }
    });
    members.require(format, start);
    members.require(version, start);
    return mount;
}

} // namespace vxshow
