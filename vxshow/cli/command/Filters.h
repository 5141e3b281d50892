#pragma once

#include "vxshow/cli/FilterOptions.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/narrow/NarrowTables.h"

#include <algorithm>
#include <vector>

/// The filters of each subject, shared by its commands.
namespace vxshow::cli::command {

/// The VTEPs as the library takes them. A subnet becomes those of its VTEPs that `parts` of the
/// mount have; its first address stands for it if there are none, as an empty list would let every
/// VTEP through.
template <class... Parts>
Vex::Ptr<VxlanController::Cli::VtepList> vtepListOf(filter::VtepFilter const & filter,
                                                    Parts const &... parts) {
    auto list = VxlanController::Cli::vtepListFactory();
    std::vector<Nolt::IpAddr> vteps = filter.addresses;
    if (!filter.subnets.empty()) {
        for (auto const & subnet : filter.subnets.intervals()) {
            vteps.push_back(subnet.first);
        }
        (state::narrow::addVtepsWithin(filter.subnets, parts, vteps), ...);
    }
    for (Nolt::IpAddr const vtep : vteps) {
        list->vtepIs(vtep, true);
    }
    return list;
}

/// The filters that both commands of `mac` share.
struct MacFilters {
    filter::VniFilter vnis;
    filter::MacFilter macs;
    filter::VtepFilter vteps;

    void addTo(CLI::App & command) {
        addVniFilter(command, vnis);
        addMacFilter(command, macs);
        addVtepFilter(command, vteps,
                      "Only entries with one of these VTEPs, IPv4; or with one of this subnet: "
                      "10.0.0.0/24");
    }

    /// What the library's filters cannot select.
    state::narrow::TableFilter narrowing() const { return {.vnis = vnis.many, .macs = macs.many}; }
};

/// The filters of `arp`.
struct ArpFilters {
    filter::VniFilter vnis;
    filter::MacFilter macs;
    filter::IpFilter ips;

    void addTo(CLI::App & command) {
        addVniFilter(command, vnis);
        addMacFilter(command, macs);
        addIpFilter(command, ips);
    }

    /// As that of `MacFilters`.
    state::narrow::TableFilter narrowing() const {
        return {.vnis = vnis.many, .macs = macs.many, .ips = ips.many};
    }
};

/// The part of the state that all commands of `router` use.
inline state::Selection selectsRouters() {
    return {.received = false, .advertised = false};
}

/// The filter shared by all commands of `router`.
inline void addRouterFilter(CLI::App & command, filter::NameFilter & routers) {
    addNameFilter(command, "--router", routers, "NAME",
                  "Only these logical routers by name or pattern, tenant*");
}

} // namespace vxshow::cli::command
