#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/router/RouterState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>

/// State is published in any order, and most of it is kept in hashed collections. A listing
/// depends on neither.
namespace {

using Step = std::function<void(RouterState &)>;
using Steps = std::vector<Step>;

/// Everything that depends on an order somewhere: switches with several active VTEPs, uplinks
/// with several VLANs, routers in two entries that contradict each other.
Steps everything() {
    Steps steps;
    for (int i = 0; i < 24; ++i) {
        std::string const n = std::to_string(i);
        std::string const id = "02:00:00:00:00:" + std::to_string(10 + i);
        std::string const router = "router" + n;
        for (int k = 0; k < 6; ++k) {
            std::string const vtep = k % 2 == 0 ? "10." + n + ".0." + std::to_string(k)
                                                : "2001:db8:" + n + "::" + std::to_string(k);
            steps.push_back([=](RouterState & state) { state.leaf(id, {vtep.c_str()}, {router}); });
            std::string const other = "router" + std::to_string((i + 7 * k) % 24);
            steps.push_back([=](RouterState & state) { state.leaf(id, {}, {other}); });
            std::string const ip = "10.0." + std::to_string(k) + "." + n;
            steps.push_back([=](RouterState & state) {
                state.port(router, (ip + "/24").c_str(), static_cast<Vex::U32>(k));
            });
            steps.push_back([=](RouterState & state) {
                state.route(router, (ip + "/32").c_str(), {"10.0.0.2", "10.0.0.1", "::1"});
            });
        }
        steps.push_back([=](RouterState & state) { state.inactive(("10." + n + ".0.0").c_str()); });
        for (char const * entry : {"x", "y"}) {
            auto const vni = static_cast<Vex::U32>(*entry);
            steps.push_back([=](RouterState & state) {
                state.status(entry + n, router);
                state.port(entry + n, "10.8.0.1/24", vni);
            });
        }
    }
    return steps;
}

/// Adds uplinks. Each is a single step, since an uplink is published whole; `arrange` orders its
/// ports and VLANs instead.
void addUplinks(RouterState & state, std::function<void(std::vector<PortVlan> &)> const & arrange) {
    for (int i = 0; i < 24; ++i) {
        std::vector<PortVlan> pairs;
        for (char const * port : {"Et1", "Et2", "Et3", "Et4"}) {
            for (Vex::U16 vlan = 100; vlan < 104; ++vlan) {
                pairs.push_back({port, static_cast<Vex::U16>(vlan + 10 * i)});
            }
        }
        arrange(pairs);
        VxlanController::LRIpUplinkPortV2 uplink(Nolt::IpGenAddrWithMask::fromString("10.9.0.1/24"),
                                                 {}, {});
        for (PortVlan const & pair : pairs) {
            uplink.portVlanIs({pair.port, Bridging::VlanIdOrNone(pair.vlan)});
        }
        state.status("router" + std::to_string(i)).ipUplinkPortIs(std::move(uplink));
    }
}

/// What all commands print, text and JSON, with and without filters.
std::string listings(RouterState const & state) {
    RouterFilters const some = {.vteps = {"10.3.0.2", "10.3.0.4", "10.5.0.0", "10.1.0.2"}};
    RouterFilters const leaf = {.switchId = "02:00:00:00:00:15"};
    return mapText(state) + mapJson(state) + mapText(state, some) + mapText(state, leaf) +
           detailText(state) + detailJson(state) + routesText(state) + routesJson(state);
}

RouterState filled(std::function<void(Steps &)> const & arrangeSteps,
                   std::function<void(std::vector<PortVlan> &)> const & arrangePairs) {
    Steps steps = everything();
    arrangeSteps(steps);
    RouterState state;
    for (Step const & step : steps) {
        step(state);
    }
    addUplinks(state, arrangePairs);
    return state;
}

auto const unchanged = [](auto &) {};

auto const reversed = [](auto & all) { std::reverse(all.begin(), all.end()); };

} // namespace

TEST(Order, AListingDoesNotDependOnTheOrderOfFilling) {
    std::string const expected = listings(filled(unchanged, unchanged));
    EXPECT_TRUE(listings(filled(reversed, reversed)) == expected);
    std::mt19937 engine(7);
    auto const shuffled = [&](auto & all) { std::shuffle(all.begin(), all.end(), engine); };
    for (int round = 0; round < 20; ++round) {
        EXPECT_TRUE(listings(filled(shuffled, shuffled)) == expected) << round;
    }
}

TEST(Order, OneOfTheActiveVtepsIsShown) {
    RouterState const state = filled(unchanged, unchanged);
    auto const command = mapCommand(state);
    rendered(command);
    EXPECT_EQ(command->switchMap().size(), 24U);
    for (VxlanController::Cli::SwitchMap const & leaf : command->switchMap()) {
        EXPECT_TRUE(state.switchInfoDir->vtepMap(leaf.vtepAddr())->active());
        bool own = false;
        for (auto const & vtep : state.switchInfoDir->switchInfo(leaf.switchId())->vtepMap()) {
            own = own || vtep.address() == leaf.vtepAddr();
        }
        EXPECT_TRUE(own) << leaf.switchId();
    }
}

TEST(Order, OneOfTheVlansIsShown) {
    RouterState const state = filled(unchanged, unchanged);
    auto const command = detailCommand(state);
    rendered(command);
    auto const ip = Nolt::IpGenAddrWithMask::fromString("10.9.0.1/24");
    for (int i = 0; i < 24; ++i) {
        auto const & uplink = command->lRDetail("router" + std::to_string(i))->ipUplinkPort(ip);
        EXPECT_GE(uplink.vlanId().value(), 100 + 10 * i);
        EXPECT_LT(uplink.vlanId().value(), 104 + 10 * i);
    }
}

TEST(Order, ASwitchKeepsItsVtepWhicheverFilterSelectsIt) {
    RouterState const state = filled(unchanged, unchanged);
    std::set<std::string> shown;
    for (char const * vtep : {"10.3.0.0", "10.3.0.2", "10.3.0.4"}) {
        shown.insert(mapText(state, {.vteps = {vtep}}));
    }
    shown.insert(mapText(state, {.switchId = "02:00:00:00:00:13"}));
    EXPECT_EQ(shown.size(), 1U);
    EXPECT_NE(shown.begin()->find("02:00:00:00:00:13"), std::string::npos);
}
