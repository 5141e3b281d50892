#pragma once

#include "Vxlan/VniOrNone.h"
#include "VxlanController/VxlanControllerCliModel.h"
#include "state/FloodTable.h"
#include "state/HostTable.h"

/// How the tables of EVPN get into the received tables, under the name of their source, and into
/// the advertised ones. A source and a VNI appear only with their first entry.
namespace VxlanController::Cli {

/// The pair of tables under `name`, or null with a trace record if there is none.
Vex::Ptr<HostFloodTable const> hostFloodTable(Vex::Ptr<HostFloodTableList const> const & list,
                                              Vex::Name const & name);

/// Copies the hosts that the filters select as unicast entries under their VNI. The zero MAC
/// address matches every MAC; a null or empty `vtepFilter` lets every VTEP through. A null table
/// is skipped with a trace record. Corruption is reported to the table's own handler and ends
/// the copy of this table; entries copied before it are kept. Raises `outfmt::SigIntException`
/// if the user interrupts.
void copyHostTable(Vex::Ptr<VcsEvpn::HostTable const> const & table,
                   Vex::Ptr<SwitchDir> const & target, Vex::Name const & source,
                   Vxlan::VniOrNone vniFilter, Nolt::EthAddr macFilter,
                   Vex::Ptr<VtepList const> const & vtepFilter);
void copyHostTable(Vex::Ptr<VcsEvpn::HostTable const> const & table,
                   Vex::Ptr<VniStatusList> const & vnis, Vxlan::VniOrNone vniFilter,
                   Nolt::EthAddr macFilter, Vex::Ptr<VtepList const> const & vtepFilter);

/// Copies the flood VTEPs that the filters select, as copyHostTable() does for hosts. Flood
/// entries have no MAC, so a MAC filter excludes all of them.
void copyFloodTable(Vex::Ptr<VcsEvpn::FloodTable const> const & table,
                    Vex::Ptr<SwitchDir> const & target, Vex::Name const & source,
                    Vxlan::VniOrNone vniFilter, Nolt::EthAddr macFilter,
                    Vex::Ptr<VtepList const> const & vtepFilter);
void copyFloodTable(Vex::Ptr<VcsEvpn::FloodTable const> const & table,
                    Vex::Ptr<VniStatusList> const & vnis, Vxlan::VniOrNone vniFilter,
                    Nolt::EthAddr macFilter, Vex::Ptr<VtepList const> const & vtepFilter);

/// Copies one host as a unicast entry.
void copyHost(VcsEvpn::Host const & host, Vex::Ptr<SwitchDir> const & target,
              Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr const & mac);
void copyHost(VcsEvpn::Host const & host, Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
              Nolt::EthAddr const & mac);

/// Adds one flood VTEP: those of one VNI form one flood list under the zero MAC address.
void copyFloodEntry(Vex::Ptr<SwitchDir> const & target, Vex::Name const & source, Vxlan::Vni vni,
                    Nolt::IpAddr const & vtep);
void copyFloodEntry(Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
                    Nolt::IpAddr const & vtep);

} // namespace VxlanController::Cli
