#include "vxshow/sources/Facts.h"

#include "tests/unit/vxshow/sources/CountedClock.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/sources/Findings.h"

#include <functional>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;

namespace {

Vxlan::Vni const vni10(10);
auto const mac1 = Nolt::EthAddr::ofValue(1);
auto const mac2 = Nolt::EthAddr::ofValue(2);
Nolt::IpAddr const vtep1(1);
Nolt::IpAddr const vtep2(2);

} // namespace

TEST(Facts, ASettledSideHasEachFactOnceInOneOrder) {
    SideFacts side;
    side.macs = {{vni10, mac2, vtep1},
                 {vni10, mac1, vtep2},
                 {vni10, mac1, vtep1},
                 {Vxlan::Vni(9), mac2, vtep1},
                 {vni10, mac1, vtep2}};
    side.floods = {{vni10, {}, vtep2}, {vni10, {}, vtep1}, {vni10, {}, vtep2}};
    side.settle();
    EXPECT_EQ(side.macs, (std::vector<MacPlace>{{Vxlan::Vni(9), mac2, vtep1},
                                                {vni10, mac1, vtep1},
                                                {vni10, mac1, vtep2},
                                                {vni10, mac2, vtep1}}));
    EXPECT_EQ(side.floods, (std::vector<FloodTarget>{{vni10, {}, vtep1}, {vni10, {}, vtep2}}));
    EXPECT_EQ(side.vnis, (std::vector{Vxlan::Vni(9), vni10}));
}

TEST(Facts, OfPlacesThatDifferOnlyInMovesTheOneWithTheMostStays) {
    SideFacts side;
    side.macs = {{vni10, mac1, vtep1, 2}, {vni10, mac1, vtep1, 7}, {vni10, mac1, vtep1, 0}};
    side.settle();
    EXPECT_EQ(side.macs, (std::vector<MacPlace>{{vni10, mac1, vtep1, 7}}));
}

TEST(Facts, BindingsAreInOrderOfPrecedence) {
    Nolt::IpGenAddr const ip(vtep1);
    SideFacts side;
    side.bindings = {{vni10, ip, mac2, 1, 1},
                     {vni10, ip, mac1, 1, 1},
                     {vni10, ip, mac2, 1, 2},
                     {vni10, ip, mac2, 2, 0}};
    side.settle();
    EXPECT_EQ(side.bindings, (std::vector<IpBinding>{{vni10, ip, mac2, 2, 0},
                                                     {vni10, ip, mac2, 1, 2},
                                                     {vni10, ip, mac1, 1, 1},
                                                     {vni10, ip, mac2, 1, 1}}));
}

TEST(Facts, AVniWithoutFactsIsKept) {
    SideFacts side;
    side.vnis = {vni10, Vxlan::Vni(3), vni10};
    side.settle();
    EXPECT_EQ(side.vnis, (std::vector{Vxlan::Vni(3), vni10}));
}

TEST(Facts, MergedSidesAreSettledTogether) {
    Vxlan::Vni const vni9(9);
    Nolt::IpGenAddr const ip(vtep1);
    std::vector<SideFacts> parts(5);
    parts[0].macs = {{vni10, mac1, vtep1, 2}, {vni10, mac2, vtep1}};
    parts[0].bindings = {{vni10, ip, mac1, 1, 1}};
    parts[1].macs = {{vni9, mac1, vtep2}, {vni10, mac1, vtep1, 7}, {vni10, mac1, vtep2}};
    parts[1].floods = {{vni9, {}, vtep2}, {vni10, {}, vtep1}};
    parts[2].vnis = {Vxlan::Vni(3)};
    parts[2].bindings = {{vni10, ip, mac2, 2, 0}};
    parts[4].macs = {{vni10, mac1, vtep1, 5}};
    parts[4].floods = {{vni9, {}, vtep1}, {vni10, {}, vtep1}};
    SideFacts together;
    std::vector<SideFacts const *> pointers;
    for (SideFacts & part : parts) {
        together.macs.insert(together.macs.end(), part.macs.begin(), part.macs.end());
        together.floods.insert(together.floods.end(), part.floods.begin(), part.floods.end());
        together.bindings.insert(together.bindings.end(), part.bindings.begin(),
                                 part.bindings.end());
        together.vnis.insert(together.vnis.end(), part.vnis.begin(), part.vnis.end());
        part.settle();
        pointers.push_back(&part);
    }
    together.settle();
    DeadlineWatch watch(Deadline::never());
    EXPECT_EQ(merged(pointers, watch), together);
    EXPECT_EQ(together.macs.size(), 4U);
    EXPECT_EQ(merged({}, watch), SideFacts());
}

namespace {

constexpr unsigned manyFacts = 100'000;

/// Facts with a list that `add(Facts &, number)` has filled in descending order.
Facts unsettledFacts(std::function<void(Facts &, unsigned)> const & add) {
    Facts facts;
    for (unsigned number = manyFacts; number != 0; --number) {
        add(facts, number);
    }
    return facts;
}

/// Whether settling ends at the deadline.
bool settlesLate(std::function<void(Facts &, unsigned)> const & add) {
    auto facts = unsettledFacts(add);
    DeadlineWatch watch(CountedClock::overAfter(0));
    try {
        facts.settle(watch);
        return true;
    } catch (TimedOut const &) {
        return false;
    }
}

Nolt::EthAddr manyMacOf(unsigned number) {
    return Nolt::EthAddr::ofValue(number);
}

} // namespace

TEST(FactsDeadline, NoLongListIsSettledAfterIt) {
    EXPECT_FALSE(settlesLate([](Facts & facts, unsigned number) {
        facts.remote.macs.push_back({vni10, manyMacOf(number), vtep1});
    }));
    EXPECT_FALSE(settlesLate([](Facts & facts, unsigned number) {
        facts.local["leaf1"].floods.push_back({vni10, manyMacOf(number), vtep1});
    }));
    EXPECT_FALSE(settlesLate([](Facts & facts, unsigned number) {
        facts.remote.bindings.push_back({vni10, Nolt::IpGenAddr(Nolt::IpAddr(number)), mac1});
    }));
    EXPECT_FALSE(settlesLate(
        [](Facts & facts, unsigned number) { facts.remote.vnis.emplace_back(number); }));
    EXPECT_FALSE(settlesLate([](Facts & facts, unsigned number) {
        facts.details.macs.push_back({vni10, manyMacOf(number)});
    }));
    EXPECT_FALSE(settlesLate([](Facts & facts, unsigned number) {
        facts.details.vniNames.push_back({Vxlan::Vni(number), "red"});
    }));
    EXPECT_FALSE(settlesLate([](Facts & facts, unsigned number) {
        facts.details.l3Vnis.push_back({Vxlan::Vni(number), "red"});
    }));
}

TEST(FactsDeadline, ManyShortListsAreNotSettledAfterIt) {
    EXPECT_FALSE(settlesLate([](Facts & facts, unsigned number) {
        if (number <= 5000) {
            facts.local[std::to_string(number)];
        }
    }));
}

TEST(FactsDeadline, LongListsAreNotMergedOnceItIsOver) {
    SideFacts odd;
    SideFacts even;
    for (unsigned number = 0; number < manyFacts; number += 2) {
        odd.macs.push_back({vni10, manyMacOf(number + 1), vtep1});
        even.macs.push_back({vni10, manyMacOf(number), vtep1});
    }
    auto const together = [&](std::size_t looks) {
        DeadlineWatch watch(CountedClock::overAfter(looks));
        return merged({&odd, &even}, watch);
    };
    EXPECT_EQ(together(1000).macs.size(), manyFacts);
    auto const all = CountedClock::looks();
    // At least one for each 4,096 facts that are merged.
    EXPECT_GE(all, manyFacts / 4096);
    for (std::size_t looks = 0; looks < all; ++looks) {
        EXPECT_THROW(together(looks), TimedOut) << looks;
    }
}

} // namespace vxshow::test
