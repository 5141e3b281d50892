#pragma once

#include "state/VniFdbStatusV2.h"
#include "tests/unit/VxlanController/Fabric.h"

/// An advertised state, as a test writes it down: per-VNI entries under any name, the HSC
/// source, and the EVPN tables.
class AdvertisedFabric {
public:
    /// The tables of the entry `name`, created if absent.
    VxlanController::VniTables & entry(char const * name);

    /// The tables of one VNI of the HSC source, created if absent.
    VxlanController::VniTables & hsc(Vex::U32 vni);

    Vex::Ptr<Vex::Dir> vniStatusDir = Vex::makePtr<Vex::Dir>();
    Vex::Ptr<VxlanController::Cli::VniStatusDirList> sources =
        VxlanController::Cli::vniStatusDirListFactory();
    Evpn evpn;

private:
    std::vector<std::pair<std::string, Vex::Ptr<VxlanController::VniFdbStatusV2>>> entries_;
    Vex::Ptr<VxlanController::VniStatusDirV2> hsc_;
};

/// The command that lists `fabric`.
Vex::Ptr<VxlanController::Cli::VcsVniAdvertised> advertisedCommand(AdvertisedFabric const & fabric,
                                                                   MacFilter const & filter = {});

/// What it renders, as text or JSON.
std::string advertisedText(AdvertisedFabric const & fabric, MacFilter const & filter = {});
std::string advertisedJson(AdvertisedFabric const & fabric, MacFilter const & filter = {},
                           Vex::U32 revision = 2);
