#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"

#include <string>

/// One binding, as a test writes it down.
struct Binding {
    char const * ip;
    char const * mac;
    Vex::U32 changes = 0;
    Vex::U8 preference = 0;
};

/// A published ARP state, as a test writes it down: advertised tables by the name of their
/// entry, received ones by switch and VNI.
class ArpState {
public:
    ArpState & advertised(std::string const & name, std::initializer_list<Binding> bindings);
    ArpState & received(std::string const & switchId, Vex::U32 vni,
                        std::initializer_list<Binding> bindings);

    /// A switch without any VNI.
    ArpState & switchOnly(std::string const & switchId);

    Vex::Ptr<Vex::Dir> vnis = Vex::makePtr<Vex::Dir>();
    Vex::Ptr<Vex::Dir> switches = Vex::makePtr<Vex::Dir>();
};

/// Adds `count` bindings, 10.0.0.0 and those that follow.
void addMany(VxlanController::VniTables & status, Vex::U32 count);

/// The filters of a listing; none is set at first. The switch applies to received tables only.
struct ArpFilters {
    Vxlan::VniOrNone vni = {};
    std::string mac = "00:00:00:00:00:00";
    std::string ip = {};
    std::string switchId = {};
    bool dotted = false;
};

/// The commands that list `state`.
Vex::Ptr<VxlanController::Cli::ArpAdvertised> advertisedCommand(ArpState const & state,
                                                                ArpFilters const & filters = {});
Vex::Ptr<VxlanController::Cli::ArpReceived> receivedCommand(ArpState const & state,
                                                            ArpFilters const & filters = {});

/// What they render.
std::string advertisedText(ArpState const & state, ArpFilters const & filters = {});
std::string advertisedJson(ArpState const & state, ArpFilters const & filters = {});
std::string receivedText(ArpState const & state, ArpFilters const & filters = {});
std::string receivedJson(ArpState const & state, ArpFilters const & filters = {});

/// The text listing with these rows: the header, the rows, an empty line, the total.
std::string advertisedTable(std::string const & rows, int total);
std::string receivedTable(std::string const & rows, int total);
