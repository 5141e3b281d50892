#include "vxshow/sources/fabric/SourceCounts.h"

#include <algorithm>
#include <limits>
#include <set>

namespace vxshow::sources::fabric {

namespace {

void add(Vex::U32 & to, std::size_t count) {
    constexpr std::size_t most = std::numeric_limits<Vex::U32>::max();
    to = static_cast<Vex::U32>(std::min(to + count, most));
}

} // namespace

state::SourceCounts countsOf(Answer const & answer) {
    state::SourceCounts counts;
    auto const & facts = answer.facts;
    std::set<Vxlan::Vni> vnis(facts.remote.vnis.begin(), facts.remote.vnis.end());
    for (auto const & [name, side] : facts.local) {
        vnis.insert(side.vnis.begin(), side.vnis.end());
        add(counts.localMacs, side.macs.size());
        add(counts.localBindings, side.bindings.size());
        add(counts.floods, side.floods.size());
    }
    add(counts.switches, facts.switches.size());
    add(counts.vnis, vnis.size());
    add(counts.remoteMacs, facts.remote.macs.size());
    add(counts.remoteBindings, facts.remote.bindings.size());
    add(counts.floods, facts.remote.floods.size());
    add(counts.routers, facts.routers.size());
    for (auto const & [name, router] : facts.routers) {
        add(counts.routes, router.routes.size());
    }
    auto const & findings = answer.findings;
    add(counts.leftOut, findings.leftOut.count());
    add(counts.ipv6Vteps, findings.ipv6Vteps.count());
    add(counts.unplaced, findings.unplaced.count());
    add(counts.disputed, findings.disputed.count());
    return counts;
}

} // namespace vxshow::sources::fabric
