#include "VxlanController/VxlanControllerCliModel.h"
#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/ForEachEntity.h"
#include "VxlanController/command/RenderFrame.h"
#include "VxlanController/mac/CopyEvpn.h"
#include "VxlanController/mac/CopyTables.h"
#include "VxlanController/mac/CopyVniStatus.h"
#include "VxlanController/mac/ReceivedJson.h"
#include "VxlanController/mac/ReceivedText.h"
#include "VxlanController/mac/Target.h"
#include "state/VniStatusDirV2.h"

/// The command that shows the MAC tables received from switches and other sources.
namespace VxlanController::Cli {

namespace {

bool isNonSwitchSource(Vex::Name const & name) {
    return name == "HSC" || name == "QVX";
}

} // namespace

void VcsVniReceived::initialize() {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsVniReceived::initialize()";
    }
    switchDirDel();
    nonSwitchSourceDirDel();
    switchDirIs();
    nonSwitchSourceDirIs();

    // "all" selects every switch but no other source; only the empty filter selects
    // everything. The keywords are lower case: "HSC" counts as the name of a switch.
    Vex::String const & filter = switchFilter();
    if (switchAggregate()) {
        if (filter.empty() || filter == "all") {
            forEachName(*switchAggregate(), [&](Vex::Name const & name) { copySwitch(name); });
        } else if (filter != "hsc" && filter != "qvx" && filter != "evpn" &&
                   switchAggregate()->entryState(filter)) {
            copySwitch(filter);
        }
    }
    if (nonSwitchAggregate()) {
        if (filter.empty()) {
            for (auto it = nonSwitchAggregate()->vniStatusDir().begin(); it; ++it) {
                copySwitch(it.key());
            }
        } else if (filter == "hsc") {
            copySwitch("HSC");
        } else if (filter == "qvx") {
            copySwitch("QVX");
        }
    }
    if (nonSwitchHostFloodTables()) {
        if (filter.empty()) {
            for (auto it = nonSwitchHostFloodTables()->hostFloodTable().begin(); it; ++it) {
                copyTable(it.key());
            }
        } else if (filter == "evpn") {
            copyTable("EVPN");
        }
    }
}

void VcsVniReceived::copySwitch(Vex::Name switchId) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsVniReceived::copySwitch(Vex::Name) switchId "
               << switchId.stringValue();
    }
    bool const nonSwitch = isNonSwitchSource(switchId);
    Vex::Ptr<VniStatusDirV2 const> vnis;
    if (nonSwitch && nonSwitchAggregate()) {
        vnis = nonSwitchAggregate()->vniStatusDir(switchId);
    } else if (!nonSwitch && switchAggregate()) {
        vnis = entityPtr<VniStatusDirV2>(*switchAggregate(), switchId);
    }
    if (!vnis) {
        if (auto record = cliTrace().at(traceMissingState)) {
            record << "vniStatusDirV2 not created for " << switchId.stringValue();
        }
        return;
    }

    auto const target = nonSwitch ? nonSwitchSourceDirIs() : switchDirIs();
    if (vniFilter().isNone()) {
        // The source is looked up once, not for each VNI.
        SourceTarget source(target, switchId);
        for (VniStatusV2 const & status : vnis->vniStatusV2()) {
            copyTables(status, status.vni(), source, {macFilter(), vtepFilter()});
        }
    } else if (auto const status = vnis->vniStatusV2(vniFilter().vni())) {
        copyVniStatus(status, target, switchId, status->vni(), macFilter(), vtepFilter());
    }
}

void VcsVniReceived::copyTable(Vex::Name tableName) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsVniReceived::copyTable(Vex::Name) tableName "
               << tableName.stringValue();
    }
    auto const tables = hostFloodTable(nonSwitchHostFloodTables(), tableName);
    if (!tables) {
        return;
    }

    auto const target = nonSwitchSourceDirIs();
    copyHostTable(tables->hostTable(), target, tableName, vniFilter(), macFilter(), vtepFilter());
    copyFloodTable(tables->floodTable(), target, tableName, vniFilter(), macFilter(), vtepFilter());
}

void VcsVniReceived::render(U32 fd, U32 format, U32 revision) {
    renderFrame(
        fd, format, [&] { initialize(); },
        [&](outfmt::Printer & printer) {
            printText(printer, vniDotted(), switchDir(), nonSwitchSourceDir());
        },
        [&](outfmt::Printer & printer) {
            renderJson(printer, vniDotted(), switchDir(), nonSwitchSourceDir(), revision);
        });
}

} // namespace VxlanController::Cli
