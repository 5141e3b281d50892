#include "vxshow/state/snapshot/RoutersWriter.h"

#include "state/LRStatusV2.h"
#include "vxshow/state/snapshot/DirectoryWriter.h"
#include "vxshow/state/snapshot/RouterStatusWriter.h"

namespace vxshow::state::snapshot {

namespace {

using VxlanController::SwitchInfo;
using VxlanController::SwitchInfoDir;
using VxlanController::VtepMap;

void requireNoInterface(Vex::String const & name) {
    if (!name.empty()) {
        throw Unwritable("a VTEP is told by its interface " + Vex::quoted(name) +
                         ", which a snapshot cannot say");
    }
}

void writeSwitch(ValuesWriter & values, SwitchInfo const & info, SwitchInfoDir const & dir) {
    std::vector<Nolt::IpGenAddr> vteps;
    for (auto at = info.vtepMap().begin(); at; ++at) {
        auto const & key = at.key();
        requireNoInterface(key.vtepName);
        auto const & vtep = at.slot().element();
        if (!vtep || dir.vtepMap(key.ip) != vtep) {
            throw Unwritable("the VTEP " + key.ip.stringValue() + " of the switch " +
                             Vex::quoted(info.switchId()) + " is none of the VTEPs");
        }
        vteps.push_back(key.ip);
    }
    values.object(writable(info.switchId()), [&] { values.addresses("vteps", vteps); });
}

void writeVtep(ValuesWriter & values, VtepMap const & vtep) {
    values.object(Spelled(vtep.address()), [&] {
        values.boolean("active", vtep.active());
        if (vtep.switchId().empty()) {
            return;
        }
        values.list("switches", [&] {
            using Key = VxlanController::SwitchIdVtepKeyPair;
            forEachByKey(vtep.switchId(), &Key::switchId, [&](Key const & key) {
                requireNoInterface(key.vtepName);
                values.element(key.switchId);
            });
        });
    });
}

void writeSwitchInfo(ValuesWriter & values, SwitchInfoDir const & dir) {
    values.object("switches", [&] {
        forEachByKey(dir.switchInfo(), &SwitchInfo::switchId,
                     [&](SwitchInfo const & info) { writeSwitch(values, info, dir); });
    });
    values.object("vteps", [&] {
        forEachByKey(dir.vtepMap(), &VtepMap::address,
                     [&](VtepMap const & vtep) { writeVtep(values, vtep); });
    });
}

void writePublished(ValuesWriter & values, Statestore::PublishStatus const & status) {
    using Controller::MountDesc;
    using Statestore::SystemPublishedMount;
    auto const system = [&](SystemPublishedMount const & published) {
        values.object(Spelled(published.systemId().address()), [&] {
            forEachByKey(published.publishedMount(), &MountDesc::path, [&](MountDesc const & at) {
                if (!at.path().empty()) {
                    values.text(writable(at.path()), at.kind());
                }
            });
        });
    };
    values.object("published",
                  [&] { forEachByKey(status.system(), &SystemPublishedMount::systemId, system); });
}

} // namespace

void writeRouters(ValuesWriter & values, Mount::Routers const & routers) {
    if (routers.switchInfoDir) {
        writeSwitchInfo(values, *routers.switchInfoDir);
    }
    if (routers.publishStatus) {
        writePublished(values, *routers.publishStatus);
    }
    if (routers.lRStatusDir) {
        using VxlanController::LRStatusV2;
        writeDirectory<LRStatusV2>(
            values, "status", *routers.lRStatusDir,
            [&](LRStatusV2 const & status) { writeRouterStatus(values, status); });
    }
}

} // namespace vxshow::state::snapshot
