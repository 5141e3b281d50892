#include "Vex/Hash.h"
#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

#include <vector>

/// Snapshots whose keys collide without a secret are read with as few steps as others.
namespace vxshow::test {

namespace {

constexpr std::size_t vtepCount = 40'000;

/// The text of a flood list.
std::string floodOf(std::vector<Nolt::IpAddr> const & vteps) {
    std::string list;
    for (auto const vtep : vteps) {
        list.append(list.empty() ? "\"" : ",\"").append(vtep.stringValue()).append("\"");
    }
    return R"({"flood":{"00:00:00:00:00:00":[)" + list + "]}}";
}

/// The steps of a search for each of the VTEPs, once they have been read.
std::size_t stepsForEach(std::vector<Nolt::IpAddr> const & vteps) {
    auto const tables = mountedTables(floodOf(vteps));
    auto const list = tables->macVtepFloodListTable(Nolt::EthAddr());
    EXPECT_EQ(list->vtepIp().size(), vteps.size());
    std::size_t steps = 0;
    for (auto const vtep : vteps) {
        steps += list->vtepIp().searchSteps(vtep);
    }
    return steps;
}

} // namespace

TEST(ChosenSnapshotKeys, FloodVtepsWithTheSameTopBitsCostNoMoreThanOthers) {
    std::vector<Nolt::IpAddr> chosen;
    for (Vex::U32 address = 0x0A000000; chosen.size() < vtepCount; ++address) {
        if (Vex::hashMix(address) >> 56 == 7) {
            chosen.emplace_back(address);
        }
    }
    EXPECT_LT(stepsForEach(chosen), 4 * vtepCount);
}

TEST(ChosenSnapshotKeys, FloodVtepsOfOneSubnetCostNoMoreThanOthers) {
    std::vector<Nolt::IpAddr> subnet;
    for (Vex::U32 address = 0x0A000000; subnet.size() < vtepCount; ++address) {
        subnet.emplace_back(address);
    }
    EXPECT_LT(stepsForEach(subnet), 4 * vtepCount);
}

} // namespace vxshow::test
