#include "vxshow/state/snapshot/Routers.h"

#include "vxshow/state/snapshot/Field.h"
#include "vxshow/state/snapshot/RouterStatus.h"
#include "vxshow/state/snapshot/SortedByKey.h"
#include "vxshow/state/snapshot/SwitchesAndVteps.h"
#include "vxshow/text/JsonAddresses.h"

#include <map>
#include <set>
#include <string>

namespace vxshow::state::snapshot {

namespace {

using Routers = Mount::Routers;

constexpr std::string_view aKind = "the kind of what is published there, a text";

void readPaths(text::JsonValue & value, Statestore::SystemPublishedMount & system) {
    value.members("an object whose members are published paths",
                  [&](text::JsonText const & key, text::JsonValue & member) {
                      Vex::String path(key.text());
                      text::onlyNew(!system.publishedMount().has(path), key);
                      Vex::String kind(member.text(aKind).text());
                      system.publishedMountIs({std::move(path), std::move(kind)});
                  });
}

Vex::Ptr<Statestore::PublishStatus> readPublished(text::JsonValue & value) {
    auto status = Vex::makePtr<Statestore::PublishStatus>();
    value.members("an object whose members are system identifiers",
                  [&](text::JsonText const & key, text::JsonValue & paths) {
                      Controller::SystemId const id(text::readMac(key));
                      text::onlyNew(!status->system(id), key);
                      readPaths(paths, *status->systemIs(id));
                  });
    return status;
}

void writePublished(ValuesWriter & values, std::string_view key,
                    Statestore::PublishStatus const & status) {
    using Controller::MountDesc;
    using Statestore::SystemPublishedMount;
    auto const system = [&](SystemPublishedMount const & published) {
        values.object(Spelled(published.systemId().address()), [&] {
            forEachByKey(published.publishedMount(), &MountDesc::path, [&](MountDesc const & at) {
                // The printer cannot write a text with an empty key, and no router is at the empty
                // path.
                if (!at.path().empty()) {
                    values.text(writable(at.path()), at.kind());
                }
            });
        });
    };
    values.object(key,
                  [&] { forEachByKey(status.system(), &SystemPublishedMount::systemId, system); });
}

using SwitchNames = std::multimap<std::string, std::string>;

SwitchNames readSwitchNames(text::JsonValue & value) {
    SwitchNames names;
    std::set<std::string> read;
    value.members("an object whose members are names of switches",
                  [&](text::JsonText const & key, text::JsonValue & identifiers) {
                      std::string const name(key.text());
                      text::onlyNew(read.insert(name).second, key);
                      std::set<std::string> all;
                      identifiers.elements("a list of identifiers", [&](text::JsonValue & one) {
                          auto const text = one.text("the identifier of a switch");
                          text::onlyNew(all.emplace(text.text()).second, text);
                      });
                      for (std::string const & identifier : all) {
                          names.emplace(name, identifier);
                      }
                  });
    return names;
}

void writeSwitchNames(ValuesWriter & values, std::string_view key, SwitchNames const & names) {
    values.object(key, [&] {
        for (auto at = names.begin(); at != names.end();) {
            auto const last = names.upper_bound(at->first);
            values.list(writable(at->first), [&] {
                for (; at != last; ++at) {
                    values.element(writable(at->second));
                }
            });
        }
    });
}

/// Switches and VTEPs describe each other, so they go into one directory at the end.
constexpr auto routersObject =
    text::strictObject("an object of what is known of logical routers",
                       optionalMember(
                           "switches",
                           [](text::JsonValue & value, Routers &, SwitchInfoReader & switchInfo) {
                               switchInfo.readSwitches(value);
                           },
                           [](ValuesWriter & values, std::string_view name, Routers const & from) {
                               if (from.switchInfoDir) {
                                   writeSwitches(values, name, *from.switchInfoDir);
                               }
                           }),
                       optionalMember(
                           "vteps",
                           [](text::JsonValue & value, Routers &, SwitchInfoReader & switchInfo) {
                               switchInfo.readVteps(value);
                           },
                           [](ValuesWriter & values, std::string_view name, Routers const & from) {
                               if (from.switchInfoDir) {
                                   writeVteps(values, name, *from.switchInfoDir);
                               }
                           }),
                       optionalMember(
                           "published",
                           [](text::JsonValue & value, Routers & into, SwitchInfoReader &) {
                               into.publishStatus = readPublished(value);
                           },
                           [](ValuesWriter & values, std::string_view name, Routers const & from) {
                               if (from.publishStatus) {
                                   writePublished(values, name, *from.publishStatus);
                               }
                           }),
                       optionalMember(
                           "status",
                           [](text::JsonValue & value, Routers & into, SwitchInfoReader &) {
                               into.lRStatusDir = readRouterStatus(value);
                           },
                           [](ValuesWriter & values, std::string_view name, Routers const & from) {
                               if (from.lRStatusDir) {
                                   writeRouterStatus(values, name, *from.lRStatusDir);
                               }
                           }),
                       optionalMember(
                           "switchNames",
                           [](text::JsonValue & value, Routers & into, SwitchInfoReader &) {
                               into.switchNames = readSwitchNames(value);
                           },
                           [](ValuesWriter & values, std::string_view name, Routers const & from) {
                               if (!from.switchNames.empty()) {
                                   writeSwitchNames(values, name, from.switchNames);
                               }
                           }));

} // namespace

Routers readRouters(text::JsonValue & value) {
    Routers routers;
    SwitchInfoReader switchInfo;
    routersObject.read(value, routers, switchInfo);
    routers.switchInfoDir = switchInfo.finished();
    return routers;
}

void writeRouters(ValuesWriter & values, Routers const & routers) {
    writeMembers(routersObject, values, routers);
}

} // namespace vxshow::state::snapshot
