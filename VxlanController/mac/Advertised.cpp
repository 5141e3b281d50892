#include "VxlanController/VxlanControllerCliModel.h"
#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/ForEachEntity.h"
#include "VxlanController/command/RenderFrame.h"
#include "VxlanController/mac/AdvertisedJson.h"
#include "VxlanController/mac/AdvertisedText.h"
#include "VxlanController/mac/CopyEvpn.h"
#include "VxlanController/mac/CopyVniFdbStatus.h"
#include "state/VniStatusDirV2.h"

#include <algorithm>
#include <cstdlib>

/// The command that shows the MAC tables advertised to switches and other destinations.
namespace VxlanController::Cli {

namespace {

/// Parses the name of a directory entry as a VNI. The leading number counts, and a name
/// without one is VNI 0. A number out of range raises `Vex::RangeError`.
Vxlan::Vni vniOfEntry(Vex::Name const & name) {
    auto const number =
        static_cast<unsigned long>(std::strtol(name.stringValue().c_str(), nullptr, 10));
    constexpr unsigned long outOfRange = Vxlan::Vni::max + 1UL;
    return Vxlan::Vni(static_cast<Vex::U32>(std::min(number, outOfRange)));
}

} // namespace

void VcsVniAdvertised::initialize() {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsVniAdvertised::initialize()";
    }
    vniDirDel();
    vniDirIs();

    // Any other destination selects everything: the advertised state is not kept per
    // destination, so a name cannot narrow it.
    if (destFilter() == "hsc") {
        if (nonSwitchAggregate()) {
            copyDest("HSC");
        }
    } else if (destFilter() == "evpn") {
        if (nonSwitchHostFloodTables()) {
            copyTable("EVPN");
        }
    } else if (vniStatusDir()) {
        copyDest("");
    }
}

void VcsVniAdvertised::copyDest(Vex::Name destName) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsVniAdvertised::copyDest(Vex::Name) destName "
               << destName.stringValue();
    }
    auto const target = vniDirIs();
    auto const copy = [&](auto const & status, Vxlan::Vni vni) {
        copyVniFdbStatus(status, target, vni, macFilter(), vtepFilter());
    };
    bool const everyVni = vniFilter().isNone();
    Vxlan::Vni const onlyVni = everyVni ? Vxlan::Vni() : vniFilter().vni();

    if (destName == "HSC") {
        Vex::Ptr<VniStatusDirV2 const> vnis;
        if (nonSwitchAggregate()) {
            vnis = nonSwitchAggregate()->vniStatusDir(destName);
        }
        if (vnis && everyVni) {
            for (VniStatusV2 const & status : vnis->vniStatusV2()) {
                copy(&status, status.vni());
            }
        } else if (auto const status = vnis ? vnis->vniStatusV2(onlyVni) : nullptr) {
            copy(status.ptr(), onlyVni);
        }
    } else if (vniStatusDir() && everyVni) {
        forEachName(*vniStatusDir(), [&](Vex::Name const & name) {
            if (auto const status = entityPtr<VniFdbStatusV2>(*vniStatusDir(), name)) {
                copy(status, vniOfEntry(name));
            }
        });
    } else if (vniStatusDir()) {
        Vex::Name const name = onlyVni.stringValue();
        if (auto const status = entityPtr<VniFdbStatusV2>(*vniStatusDir(), name)) {
            copy(status, onlyVni);
        }
    }
}

void VcsVniAdvertised::copyTable(Vex::Name tableName) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsVniAdvertised::copyTable(Vex::Name) tableName "
               << tableName.stringValue();
    }
    auto const tables = hostFloodTable(nonSwitchHostFloodTables(), tableName);
    if (!tables) {
        return;
    }

    auto const target = vniDirIs();
    copyHostTable(tables->hostTable(), target, vniFilter(), macFilter(), vtepFilter());
    copyFloodTable(tables->floodTable(), target, vniFilter(), macFilter(), vtepFilter());
}

void VcsVniAdvertised::render(U32 fd, U32 format, U32 revision) {
    renderFrame(
        fd, format, [&] { initialize(); },
        [&](outfmt::Printer & printer) { printFdbText(printer, vniDotted(), vniDir()); },
        [&](outfmt::Printer & printer) {
            renderFdbJson(printer, vniDotted(), vniDir(), revision);
        });
}

} // namespace VxlanController::Cli
