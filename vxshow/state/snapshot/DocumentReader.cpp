#include "vxshow/state/snapshot/DocumentReader.h"

#include "state/VniFdbStatusV2.h"
#include "vxshow/state/SourceNames.h"
#include "vxshow/state/snapshot/Directory.h"
#include "vxshow/state/snapshot/EvpnTables.h"
#include "vxshow/state/snapshot/PublishedTables.h"
#include "vxshow/state/snapshot/Routers.h"
#include "vxshow/text/JsonMembers.h"

#include <array>
#include <span>

namespace vxshow::state::snapshot {

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

Vex::Ptr<Vex::Dir> readSwitches(text::JsonValue & value, Wanted & wanted) {
    auto const & selection = wanted.selection;
    return readDirectory(value, "an object whose members are switches",
                         [&](Vex::Name const & name, text::JsonValue & vnis) {
                             bool const selected =
                                 selection.received && selection.takesSwitch(name.stringValue());
                             return wanted.tables.readVniStatusDir(vnis, selected);
                         });
}

Vex::Ptr<Vex::Dir> readVniEntries(text::JsonValue & value, Wanted & wanted) {
    auto const & selection = wanted.selection;
    return readDirectory(value, "an object whose members are per-VNI entries",
                         [&](Vex::Name const & name, text::JsonValue & tables) {
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
using SourceNames = std::span<text::MemberName const>;

Vex::Ptr<Cli::VniStatusDirList> readSources(text::JsonValue & value, SourceNames names,
                                            bool selected, Wanted & wanted) {
    text::Members members(names);
    auto list = Cli::vniStatusDirListFactory();
    value.members(
        "an object of sources", [&](text::JsonText const & name, text::JsonValue & member) {
            Vex::Name const source(names[members.take(name)].text());
            list->vniStatusDirIs(source, wanted.tables.readVniStatusDir(member, selected));
        });
    return list;
}

Vex::Ptr<Cli::HostFloodTableList> readEvpnSources(text::JsonValue & value) {
    static constexpr std::array<text::MemberName, 1> names{evpnName};
    text::Members members(names);
    auto list = Cli::hostFloodTableListFactory();
    value.members("an object of sources",
                  [&](text::JsonText const & name, text::JsonValue & member) {
                      Vex::Name const source(names[members.take(name)].text());
                      list->hostFloodTableIs(source, readEvpn(member));
                  });
    return list;
}

/// What is received or what is advertised: a directory, and the sources beside it.
template <class State>
State readState(text::JsonValue & value, std::string_view directoryName,
                Vex::Ptr<Vex::Dir> (*readDirectory)(text::JsonValue &, Wanted &),
                Vex::Ptr<Vex::Dir> State::*directory, SourceNames sourceNames, bool selected,
                Wanted & wanted) {
    enum Name : std::size_t { inDirectory, sources, evpn };

    std::array<text::MemberName, 3> const names{directoryName, "sources", "evpn"};
    text::Members members(names);
    State state;
    value.members("an object of published state",
                  [&](text::JsonText const & name, text::JsonValue & member) {
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

Mount::Received readReceived(text::JsonValue & value, Wanted & wanted) {
    static constexpr std::array<text::MemberName, 2> sources{hscName, qvxName};
    return readState(value, "switches", readSwitches, &Mount::Received::switches, sources,
                     wanted.selection.received, wanted);
}

Mount::Advertised readAdvertised(text::JsonValue & value, Wanted & wanted) {
    static constexpr std::array<text::MemberName, 1> sources{hscName};
    return readState(value, "vnis", readVniEntries, &Mount::Advertised::vnis, sources,
                     wanted.selection.advertised, wanted);
}

void checkFormat(text::JsonValue & value) {
    auto const expected = text::oneOf(std::array{text::MemberName(formatName)});
    auto const text = value.text(expected);
    if (text.text() != formatName) {
        text.refuse(expected);
    }
}

} // namespace

Mount readDocument(text::JsonReader & json, Selection const & selection) {
    enum Name : std::size_t { format, version, received, advertised, routers };

    static constexpr std::array<text::MemberName, 5> names{"format", "version", "received",
                                                           "advertised", "routers"};
    text::Members members(names);
    Mount mount;
    Wanted wanted(selection);
    auto const * const start = json.at();
    json.document([&](text::JsonText const & name, text::JsonValue & member) {
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

} // namespace vxshow::state::snapshot
