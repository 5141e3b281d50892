#include "vxshow/state/snapshot/RoutersReader.h"

#include "vxshow/state/snapshot/RouterStatusReader.h"
#include "vxshow/state/snapshot/SwitchInfoReader.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonMembers.h"

#include <array>

namespace vxshow::state::snapshot {

namespace {

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

} // namespace

Mount::Routers readRouters(text::JsonValue & value) {
    enum Name : std::size_t { switches, vteps, published, status };

    static constexpr std::array<text::MemberName, 4> names{"switches", "vteps", "published",
                                                           "status"};
    text::Members members(names);
    Mount::Routers routers;
    SwitchInfoReader switchInfo;
    value.members("an object of what is known of logical routers",
                  [&](text::JsonText const & name, text::JsonValue & member) {
                      switch (members.take(name)) {
                      case switches:
                          switchInfo.readSwitches(member);
                          break;
                      case vteps:
                          switchInfo.readVteps(member);
                          break;
                      case published:
                          routers.publishStatus = readPublished(member);
                          break;
                      default:
                          routers.lRStatusDir = readRouterStatus(member);
                      }
                  });
    routers.switchInfoDir = switchInfo.finished();
    return routers;
}

} // namespace vxshow::state::snapshot
