#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/FixedOrder.h"
#include "VxlanController/command/ForEachEntity.h"
#include "VxlanController/command/ForEachSorted.h"
#include "VxlanController/command/RenderFrame.h"
#include "VxlanController/router/DetailJson.h"
#include "VxlanController/router/DetailText.h"
#include "state/LRStatusV2.h"

/// The command that shows the ports of logical routers.
namespace VxlanController::Cli {

namespace {

/// The first switch, by name, that publishes the router; "" if none does.
Vex::String firstSwitch(Vex::Ptr<LRMap const> const & router) {
    auto const first = router ? router->switchList().begin() : LRMap::SwitchListIterator();
    return first ? first->switchId() : Vex::String();
}

LRIpUplinkPortAddress uplinkAddress(LRIpUplinkPortV2 const & uplink, Vex::String const & switchId,
                                    InterruptPoll & poll) {
    LRIpUplinkPortAddress address(uplink.ip());
    address.macIs(uplink.mac());
    address.switchIdIs(switchId);
    address.vtepIs(uplink.vtep());
    PortVlanPairV2 const * first = nullptr;
    for (PortVlanPairV2 const & pair : uplink.portVlan()) {
        poll.step();
        address.portIs(pair.port, true);
        if (!first || comesFirst(pair, *first)) {
            first = &pair;
        }
    }
    if (first) {
        address.vlanIdIs(first->vlan);
    }
    return address;
}

void copyPorts(LRStatusV2 const & status, Vex::String const & switchId, LRDetail & into) {
    InterruptPoll poll;
    auto const all = [](auto const & /* port */) { return true; };
    forEachSorted(status.ipPort(), &LRIpPortV2::ip, poll, all,
                  [&](LRIpPortV2 const & port) { into.ipPortIs(port); });
    forEachSorted(status.ipUplinkPort(), &LRIpUplinkPortV2::ip, poll, all,
                  [&](LRIpUplinkPortV2 const & uplink) {
                      into.ipUplinkPortIs(uplinkAddress(uplink, switchId, poll));
                  });
}

} // namespace

void VcsLR::initialize() {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsLR::initialize()";
    }
    lRDetailDelAll();
    if (!lRStatusDir()) {
        if (auto record = cliTrace().at(traceFunctionEntry)) {
            record << "void VxlanController::Cli::VcsLR::initialize() lRStatusDir is empty";
        }
        return;
    }
    buildLRMap(lRNameFilter(), "", nullptr);
    forEachEntity<LRStatusV2>(
        lRStatusDir(), [&](Vex::Name const & /* entry */, LRStatusV2 const & status) {
            if (lRNameFilter().empty() || lRNameFilter() == status.name()) {
                copyPorts(status, firstSwitch(lRMap(status.name())), *lRDetailIs(status.name()));
            }
        });
}

void VcsLR::render(U32 fd, U32 format, U32 /* all revisions print the same */) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsLR::render(U32, U32, U32)";
    }
    renderFrame(
        fd, format, [&] { initialize(); },
        [&](outfmt::Printer & printer) { renderLRText(printer, this); },
        [&](outfmt::Printer & printer) { renderLRJson(printer, this); });
}

} // namespace VxlanController::Cli
