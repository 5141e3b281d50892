#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "state/VniStatusDirV2.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

/// Add entries, written as text, to published tables.
void addUnicast(VxlanController::VniTables & tables, char const * mac, char const * vtep,
                Vex::U32 moves = 0);
void addMultipath(VxlanController::VniTables & tables, char const * mac,
                  std::initializer_list<char const *> vteps);
void addFlood(VxlanController::VniTables & tables, char const * mac,
              std::initializer_list<char const *> vteps);

/// The EVPN tables of a state, and the list that holds them under "EVPN".
class Evpn {
public:
    void host(Vex::U32 vni, char const * mac, char const * vtep, Vex::U32 moves = 0);
    void floodVtep(Vex::U32 vni, char const * vtep);

    /// Puts the filled tables into the list.
    void publish();

    VcsEvpn::HostTableWriter hosts{"hosts"};
    VcsEvpn::FloodTableWriter floodVteps{"flood"};
    Vex::Ptr<VxlanController::Cli::HostFloodTableList> list =
        VxlanController::Cli::hostFloodTableListFactory();
};

/// A received state, as a test writes it down: "HSC" and "QVX" go to the list of sources, every
/// other name to the directory of switches.
class Fabric {
public:
    Fabric & unicast(char const * source, Vex::U32 vni, char const * mac, char const * vtep,
                     Vex::U32 moves = 0);
    Fabric & multipath(char const * source, Vex::U32 vni, char const * mac,
                       std::initializer_list<char const *> vteps);
    Fabric & flood(char const * source, Vex::U32 vni, char const * mac,
                   std::initializer_list<char const *> vteps);
    Fabric & host(Vex::U32 vni, char const * mac, char const * vtep, Vex::U32 moves = 0);
    Fabric & floodVtep(Vex::U32 vni, char const * vtep);

    /// A source without any VNI.
    Fabric & source(char const * name);

    /// The tables of a source, for what the functions above do not cover.
    VxlanController::VniStatusDirV2 & dirOf(std::string const & source);

    Vex::Ptr<Vex::Dir> switches = Vex::makePtr<Vex::Dir>();
    Vex::Ptr<VxlanController::Cli::VniStatusDirList> sources =
        VxlanController::Cli::vniStatusDirListFactory();
    Evpn evpn;

private:
    std::vector<std::pair<std::string, Vex::Ptr<VxlanController::VniStatusDirV2>>> dirs_;
};

/// The filters of a listing of MAC tables; none is set at first. `source` is the source or the
/// destination.
struct MacFilter {
    Vxlan::VniOrNone vni = {};
    std::string mac = {};
    std::string source = {};
    std::vector<std::pair<std::string, bool>> vteps = {};
    bool dotted = false;
};

/// The VTEP filter as a command takes it.
Vex::Ptr<VxlanController::Cli::VtepList> vtepListOf(MacFilter const & filter);

/// The MAC filter as a command takes it.
Nolt::EthAddr macOf(MacFilter const & filter);

/// The command that lists `fabric`.
Vex::Ptr<VxlanController::Cli::VcsVniReceived> receivedCommand(Fabric const & fabric,
                                                               MacFilter const & filter = {});

/// What it renders, as text or JSON.
std::string receivedText(Fabric const & fabric, MacFilter const & filter = {});
std::string receivedJson(Fabric const & fabric, MacFilter const & filter = {},
                         Vex::U32 revision = 2);

/// The rows of one section of a text listing, with the total below them. `title` is that of the
/// section.
std::string sectionRows(std::string const & text, std::string const & title);
