#include "VxlanController/router/BuildMap.h"

#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/FixedOrder.h"
#include "VxlanController/command/InterruptPoll.h"
#include "state/PublishStatus.h"

#include <string_view>

/// Finds the switches that each logical router is present on: joins the switch information with
/// the paths that each switch publishes.
namespace VxlanController::Cli {

namespace {

/// Adds the switches of one VTEP. Several VTEPs of a filter can lead to the same switch.
void setSwitchesOf(Vex::Ptr<LRMapBase> const & base, SwitchInfoDir const & switches,
                   Nolt::IpAddr address, InterruptPoll & poll) {
    auto const vtep = switches.vtepMap(Nolt::IpGenAddr(address));
    if (!vtep) {
        return;
    }
    for (SwitchIdVtepKeyPair const & key : vtep->switchId()) {
        poll.step();
        if (auto const info = switches.switchInfo(key.switchId)) {
            setSwitchMap(base, info);
        } else if (auto record = cliTrace().at(traceFunctionEntry)) {
            record << "SwitchInfo not found for " << key.switchId;
        }
    }
}

/// The switch filter takes precedence: with both filters, the VTEPs are ignored.
void selectSwitches(Vex::Ptr<LRMapBase> const & base, SwitchInfoDir const & switches,
                    Vex::String const & switchFilter, Vex::Ptr<VtepList const> const & vtepFilter) {
    if (!switchFilter.empty()) {
        if (auto const info = switches.switchInfo(switchFilter)) {
            setSwitchMap(base, info);
        }
        return;
    }
    InterruptPoll poll;
    if (vtepFilter && !vtepFilter->vtep().empty()) {
        for (Nolt::IpAddr address : vtepFilter->vtep()) {
            poll.step();
            setSwitchesOf(base, switches, address, poll);
        }
        return;
    }
    for (auto it = switches.switchInfo().begin(); it; ++it) {
        poll.step();
        setSwitchMap(base, it.slot().element());
    }
}

/// The paths published by the system that a switch identifier denotes. Null if it has published
/// nothing, or if the identifier is not an Ethernet address and so denotes no system.
Vex::Ptr<Statestore::SystemPublishedMount const>
publishedBy(Vex::Ptr<Statestore::PublishStatus const> const & status,
            Vex::String const & switchId) {
    auto const address = Nolt::EthAddr::tryFromString(switchId);
    return status && address ? status->system(Controller::SystemId(*address)) : nullptr;
}

bool isVxlan(Controller::MountDesc const & mount) {
    return mount.kind() == "Vxlan";
}

/// Calls `visit(name)` for each logical router among `mounts` that matches the filter.
template <class Visit>
void forEachRouter(Statestore::SystemPublishedMount::PublishedMounts const & mounts,
                   Vex::String const & prefix, Vex::String const & filter, InterruptPoll & poll,
                   Visit && visit) {
    if (!filter.empty()) {
        auto const * slot = mounts.find(prefix + filter);
        if (slot && isVxlan(slot->view())) {
            visit(filter);
        }
        return;
    }
    for (Controller::MountDesc const & mount : mounts) {
        poll.step();
        if (isVxlan(mount) && mount.path().starts_with(prefix)) {
            visit(Vex::String(std::string_view(mount.path()).substr(prefix.size())));
        }
    }
}

} // namespace

void setSwitchMap(Vex::Ptr<LRMapBase> const & lrMapBase,
                  Vex::Ptr<VxlanController::SwitchInfo const> const & switchInfo) {
    InterruptPoll poll;
    SwitchInfo::VtepMaps::Slot const * first = nullptr;
    for (auto it = switchInfo->vtepMap().begin(); it; ++it) {
        poll.step();
        auto const & vtep = it.slot().element();
        if (vtep && vtep->active() && (!first || comesFirst(it.key(), first->key()))) {
            first = &it.slot();
        }
    }
    if (first) {
        lrMapBase->switchMapIs(switchInfo->switchId(), first->element()->address());
    }
}

void LRMapBase::buildLRMap(Vex::String lRNameFilter, Vex::String switchFilter,
                           Vex::Ptr<VtepList const> const & vtepFilter) {
    lRMapDelAll();
    switchMapDelAll();
    if (!switchInfoDir()) {
        return;
    }
    selectSwitches(Vex::Ptr<LRMapBase>(this), *switchInfoDir(), switchFilter, vtepFilter);
    Vex::String const prefix = pathPrefix();
    InterruptPoll poll;
    for (auto it = switchMap().begin(); it; ++it) {
        poll.step();
        auto const & member = it.slot().element();
        if (auto const published = publishedBy(switchPublishStatus(), member->switchId())) {
            forEachRouter(published->publishedMount(), prefix, lRNameFilter, poll,
                          [&](Vex::String const & name) { lRMapIs(name)->switchListIs(member); });
        }
    }
}

} // namespace VxlanController::Cli
