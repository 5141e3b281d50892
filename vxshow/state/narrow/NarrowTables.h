#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Vxlan/Vni.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/narrow/Intervals.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

/// Narrows a mount to what several filter values select, before the library sees it.
///
/// The library's own filters take one value each. A list, a range, a pattern or a subnet is applied
/// here instead: the library then lists the narrowed mount, as if the state never had the rest, so
/// totals and empty sections come out as for one value. All kinds of state are narrowed in this one
/// place, after they are mounted; a command without such a value never calls it, and so pays
/// nothing. What is kept is copied, at most once; what is kept whole is shared.
namespace vxshow::state::narrow {

/// What to keep of tables. An empty set keeps everything.
struct TableFilter {
    Intervals<Vxlan::Vni> vnis = {};
    Intervals<Nolt::EthAddr> macs = {};  ///< of MAC tables, and of bindings
    Intervals<Nolt::IpGenAddr> ips = {}; ///< of bindings

    bool keepsAll() const noexcept { return vnis.empty() && macs.empty() && ips.empty(); }
};

/// Whether to keep the switch or source of that name; null keeps each.
using KeepName = std::function<bool(std::string_view)>;

/// The VNI of an entry of `Mount::Advertised::vnis`, as the command reads its name; nullopt keeps
/// the entry, for the command to deal with.
using VniOfEntry = std::function<std::optional<Vxlan::Vni>(std::string_view)>;

/// `Mount::Received::switches`; null stays null. A switch that is kept stays even if nothing of it
/// does.
Vex::Ptr<Vex::Dir> narrowedSwitches(Vex::Ptr<Vex::Dir> const & switches, KeepName const & keep,
                                    TableFilter const & filter);

/// `Mount::Advertised::vnis`; null stays null.
Vex::Ptr<Vex::Dir> narrowedEntries(Vex::Ptr<Vex::Dir> const & entries, VniOfEntry const & vniOf,
                                   TableFilter const & filter);

/// The sources that are not switches but publish as one does; null stays null. `keep` is given
/// the names as they are mounted: "HSC".
Vex::Ptr<VxlanController::Cli::VniStatusDirList>
narrowedSources(Vex::Ptr<VxlanController::Cli::VniStatusDirList> const & sources,
                KeepName const & keep, TableFilter const & filter);

/// The shared tables of EVPN; null stays null. Their flood lists are those of the all-zero MAC
/// address. Raises `Pelo::TableError` if there is no room for a table.
Vex::Ptr<VxlanController::Cli::HostFloodTableList>
narrowedEvpn(Vex::Ptr<VxlanController::Cli::HostFloodTableList> const & evpn, KeepName const & keep,
             TableFilter const & filter);

/// The VTEPs of MAC tables that are in one of `subnets`, in any order and with repetitions. Each
/// function adds those of one part of the mount, which can be null.
void addVtepsWithin(Intervals<Nolt::IpAddr> const & subnets, Vex::Ptr<Vex::Dir> const & directory,
                    std::vector<Nolt::IpAddr> & found);
void addVtepsWithin(Intervals<Nolt::IpAddr> const & subnets,
                    Vex::Ptr<VxlanController::Cli::VniStatusDirList> const & sources,
                    std::vector<Nolt::IpAddr> & found);
void addVtepsWithin(Intervals<Nolt::IpAddr> const & subnets,
                    Vex::Ptr<VxlanController::Cli::HostFloodTableList> const & evpn,
                    std::vector<Nolt::IpAddr> & found);

/// The VTEPs of switches.
void addVtepsWithin(Intervals<Nolt::IpAddr> const & subnets,
                    Vex::Ptr<VxlanController::SwitchInfoDir> const & switches,
                    std::vector<Nolt::IpAddr> & found);

} // namespace vxshow::state::narrow
