#include "vxshow/state/snapshot/Document.h"

#include "state/VniFdbStatusV2.h"
#include "vxshow/state/SourceNames.h"
#include "vxshow/state/snapshot/CountersObject.h"
#include "vxshow/state/snapshot/DetailsObject.h"
#include "vxshow/state/snapshot/Directory.h"
#include "vxshow/state/snapshot/EvpnTables.h"
#include "vxshow/state/snapshot/Field.h"
#include "vxshow/state/snapshot/OriginObject.h"
#include "vxshow/state/snapshot/PublishedTables.h"
#include "vxshow/state/snapshot/Routers.h"

#include <algorithm>

namespace vxshow::state::snapshot {

namespace {

namespace Cli = VxlanController::Cli;
using VxlanController::VniFdbStatusV2;
using VxlanController::VniStatusDirV2;
using Received = Mount::Received;
using Advertised = Mount::Advertised;
using Routers = Mount::Routers;

constexpr text::MemberName formatName = "vxlan-controller-state";
constexpr Vex::U32 formatVersion = 1;

/// What to read from each part of the document.
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
                             auto entry = Vex::makePtr<VniFdbStatusV2>();
                             if (selection.advertised && selection.takesEntry(name.stringValue())) {
                                 wanted.tables.read(tables, *entry);
                             } else {
                                 wanted.tables.check(tables);
                             }
                             return entry;
                         });
}

/// A source that publishes as a switch does, but is not one.
constexpr auto switchLikeSource(text::MemberName source) {
    return optionalMember(
        source,
        [source](text::JsonValue & value, Cli::VniStatusDirList & into, bool selected,
                 Wanted & wanted) {
            into.vniStatusDirIs(Vex::Name(source.text()),
                                wanted.tables.readVniStatusDir(value, selected));
        },
        [](ValuesWriter & values, std::string_view name, Cli::VniStatusDirList const & from) {
            if (auto const published = from.vniStatusDir(Vex::Name(name))) {
                values.object(name, [&] { writeTables(values, *published); });
            }
        });
}

constexpr auto receivedSources = text::strictObject(
    "an object of sources", switchLikeSource(hscName), switchLikeSource(qvxName));

constexpr auto advertisedSources =
    text::strictObject("an object of sources", switchLikeSource(hscName));

constexpr auto evpnSources = text::strictObject(
    "an object of sources",
    optionalMember(
        evpnName,
        [](text::JsonValue & value, Cli::HostFloodTableList & into) {
            into.hostFloodTableIs(Vex::Name(evpnName), readEvpn(value));
        },
        [](ValuesWriter & values, std::string_view name, Cli::HostFloodTableList const & from) {
            if (auto const tables = from.hostFloodTable(Vex::Name(name))) {
                values.object(name, [&] { writeEvpn(values, *tables); });
            }
        }));

/// Writes the member `key`: the sources of `list` that `object` describes. `published` holds them
/// by name; any other source throws `Unwritable`.
template <class Object, class Published, class List>
void writeSources(ValuesWriter & values, std::string_view key, Object const & object,
                  Published const & published, List const & list) {
    for (auto at = published.begin(); at; ++at) {
        std::string_view const source = at.key();
        auto const isSource = [&](text::MemberName name) { return name.text() == source; };
        if (std::none_of(object.names().begin(), object.names().end(), isSource)) {
            throw Unwritable("a snapshot has no place for the source " + Vex::quoted(source));
        }
    }
    values.object(key, [&] { writeMembers(object, values, list); });
}

/// The member with the sources of what is received or advertised.
template <class State, class Object>
constexpr auto sourcesMember(Object const & object, bool Selection::*selected) {
    return optionalMember(
        "sources",
        [&object, selected](text::JsonValue & value, State & into, Wanted & wanted) {
            auto list = Cli::vniStatusDirListFactory();
            object.read(value, *list, wanted.selection.*selected, wanted);
            into.sources = std::move(list);
        },
        [&object](ValuesWriter & values, std::string_view name, State const & from) {
            if (from.sources) {
                writeSources(values, name, object, from.sources->vniStatusDir(), *from.sources);
            }
        });
}

template <class State>
constexpr auto evpnMember() {
    return optionalMember(
        "evpn",
        [](text::JsonValue & value, State & into, Wanted &) {
            auto list = Cli::hostFloodTableListFactory();
            evpnSources.read(value, *list);
            into.evpn = std::move(list);
        },
        [](ValuesWriter & values, std::string_view name, State const & from) {
            if (from.evpn) {
                writeSources(values, name, evpnSources, from.evpn->hostFloodTable(), *from.evpn);
            }
        });
}

constexpr std::string_view aState = "an object of published state";

constexpr auto receivedObject = text::strictObject(
    aState,
    optionalMember(
        "switches",
        [](text::JsonValue & value, Received & into, Wanted & wanted) {
            into.switches = readSwitches(value, wanted);
        },
        [](ValuesWriter & values, std::string_view name, Received const & from) {
            if (from.switches) {
                writeDirectory<VniStatusDirV2>(
                    values, name, *from.switches,
                    [&](VniStatusDirV2 const & source) { writeTables(values, source); });
            }
        }),
    sourcesMember<Received>(receivedSources, &Selection::received), evpnMember<Received>());

constexpr auto advertisedObject = text::strictObject(
    aState,
    optionalMember(
        "vnis",
        [](text::JsonValue & value, Advertised & into, Wanted & wanted) {
            into.vnis = readVniEntries(value, wanted);
        },
        [](ValuesWriter & values, std::string_view name, Advertised const & from) {
            if (from.vnis) {
                writeDirectory<VniFdbStatusV2>(
                    values, name, *from.vnis,
                    [&](VniFdbStatusV2 const & entry) { writeTables(values, entry); });
            }
        }),
    sourcesMember<Advertised>(advertisedSources, &Selection::advertised), evpnMember<Advertised>());

void readFormat(text::JsonValue & value) {
    auto const expected = text::oneOf({&formatName, 1});
    auto const text = value.text(expected);
    if (text.text() != formatName.text()) {
        text.refuse(expected);
    }
}

constexpr auto documentObject = text::strictObject(
    "an object",
    requiredMember(
        "format", [](text::JsonValue & value, Mount &, Wanted &) { readFormat(value); },
        [](ValuesWriter & values, std::string_view name, Mount const &) {
            values.text(name, formatName.text());
        }),
    requiredMember(
        "version",
        [](text::JsonValue & value, Mount &, Wanted &) { value.numberIs(formatVersion); },
        [](ValuesWriter & values, std::string_view name, Mount const &) {
            values.number(name, formatVersion);
        }),
    optionalMember(
        "received",
        [](text::JsonValue & value, Mount & into, Wanted & wanted) {
            receivedObject.read(value, into.received, wanted);
        },
        [](ValuesWriter & values, std::string_view name, Mount const & from) {
            Received const & received = from.received;
            if (received.switches || received.sources || received.evpn) {
                values.object(name, [&] { writeMembers(receivedObject, values, received); });
            }
        }),
    optionalMember(
        "advertised",
        [](text::JsonValue & value, Mount & into, Wanted & wanted) {
            advertisedObject.read(value, into.advertised, wanted);
        },
        [](ValuesWriter & values, std::string_view name, Mount const & from) {
            Advertised const & advertised = from.advertised;
            if (advertised.vnis || advertised.sources || advertised.evpn) {
                values.object(name, [&] { writeMembers(advertisedObject, values, advertised); });
            }
        }),
    optionalMember(
        "routers",
        [](text::JsonValue & value, Mount & into, Wanted &) { into.routers = readRouters(value); },
        [](ValuesWriter & values, std::string_view name, Mount const & from) {
            Routers const & routers = from.routers;
            if (routers.switchInfoDir || routers.publishStatus || routers.lRStatusDir) {
                values.object(name, [&] { writeRouters(values, routers); });
            }
        }),
    optionalMember(
        "origin",
        [](text::JsonValue & value, Mount & into, Wanted &) { into.origin = readOrigin(value); },
        [](ValuesWriter & values, std::string_view name, Mount const & from) {
            if (from.origin) {
                values.object(name, [&] { writeOrigin(values, *from.origin); });
            }
        }),
    optionalMember(
        "details",
        [](text::JsonValue & value, Mount & into, Wanted &) { into.details = readDetails(value); },
        [](ValuesWriter & values, std::string_view name, Mount const & from) {
            if (!from.details.empty()) {
                values.object(name, [&] { writeDetails(values, from.details); });
            }
        }),
    optionalMember(
        "uncounted",
        [](text::JsonValue & value, Mount & into, Wanted &) {
            into.counters = readUncounted(value);
        },
        [](ValuesWriter & values, std::string_view name, Mount const & from) {
            if (!from.counters.areAllKept()) {
                values.object(name, [&] { writeUncounted(values, from.counters); });
            }
        }));

} // namespace

Mount readDocument(text::JsonReader & json, Selection const & selection) {
    Mount mount;
    Wanted wanted(selection);
    documentObject.read(json, mount, wanted);
    return mount;
}

void writeSnapshot(Mount const & mount, outfmt::Printer & printer) {
    printer.start();
    ValuesWriter values(printer);
    writeMembers(documentObject, values, mount);
    printer.end();
    printer.flush();
}

} // namespace vxshow::state::snapshot
