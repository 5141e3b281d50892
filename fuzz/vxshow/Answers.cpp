#include "fuzz/vxshow/Answers.h"

#include "fuzz/harness/Check.h"
#include "fuzz/harness/Lines.h"
#include "fuzz/vxshow/Listings.h"
#include "vxshow/sources/Merge.h"

namespace fuzz {

using namespace vxshow;

namespace {

using sources::Facts;
using sources::Role;

/// What another source knows of the same switch, routers and addresses.
Facts otherFacts() {
    Vxlan::Vni const vni(10);
    Nolt::IpAddr const vtep(0x0a000001);
    auto const mac = Nolt::EthAddr::ofValue(0x020010000101);
    auto const ip = Nolt::IpGenAddr::ipv6(0x20010db800000000, 1);
    Facts facts;
    facts.local["leaf1"] = {.vnis = {vni},
                            .macs = {{vni, mac, vtep, 7}},
                            .floods = {{vni, {}, vtep}},
                            .bindings = {{vni, ip, mac, 1, 2}}};
    facts.remote.macs = {{Vxlan::Vni(5001), mac, Nolt::IpAddr(0x0a000003), 1}};
    facts.switches["leaf1"] = {.systemId = mac, .vteps = {vtep}, .routers = {"red"}};
    facts.routers["red"].routes[Nolt::IpGenPrefix(Nolt::IpAddr(0x0a000000), 8)] = {ip};
    facts.settle();
    return facts;
}

std::optional<std::string> merged(Facts const & first, Facts const & second, Role role,
                                  Scratch & file) {
    sources::Merge merge;
    merge.add(first, role);
    merge.add(second, role);
    return snapshotOf(merge.mount(), file);
}

} // namespace

void checkAnswer(sources::Answer const & answer) {
    static Scratch file;
    static Facts const other = otherFacts();
    static bool const isWritable = merged(other, other, Role::switches, file).has_value();
    check(isWritable, "the facts of the other source cannot be written");
    auto settled = answer.facts;
    settled.settle();
    check(settled == answer.facts, "facts are not settled");
    if (auto const warning = answer.findings.warning()) {
        checkLine(*warning);
    }
    for (auto const role : {Role::switches, Role::evpn, Role::hsc}) {
        sources::Merge merge;
        merge.add(answer.facts, role);
        checkSnapshot(merge.mount(), file);
        check(merged(answer.facts, other, role, file) == merged(other, answer.facts, role, file),
              "the order of the sources matters");
    }
}

} // namespace fuzz
