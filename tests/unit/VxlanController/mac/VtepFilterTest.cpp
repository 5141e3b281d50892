#include "tests/unit/VxlanController/AdvertisedFabric.h"
#include "tests/unit/VxlanController/Rendered.h"

#include <gtest/gtest.h>

namespace {

/// How many unicast entries pass, of two behind 10.0.0.1 and two behind 10.0.0.2.
std::size_t passing(std::vector<std::pair<std::string, bool>> const & vteps) {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1")
        .unicast("leaf1", 10, "02:00:00:00:00:02", "10.0.0.2")
        .host(10, "02:00:00:00:00:01", "10.0.0.1")
        .host(10, "02:00:00:00:00:02", "10.0.0.2");
    auto const command = receivedCommand(fabric, {.vteps = vteps});
    command->initialize();
    std::size_t count = 0;
    for (auto const & dir : {command->switchDir(), command->nonSwitchSourceDir()}) {
        for (auto const & source : dir->switchList()) {
            count += source.vniStatusList()->vniEntry(Vxlan::Vni(10))->macVtepTable().size();
        }
    }
    return count;
}

} // namespace

TEST(VtepFilter, AnEmptyListLetsEverythingThrough) {
    EXPECT_EQ(passing({}), 4U);
}

TEST(VtepFilter, AnAbsentVtepIsFilteredOut) {
    EXPECT_EQ(passing({{"10.0.0.1", true}}), 2U);
    EXPECT_EQ(passing({{"10.0.0.9", true}}), 0U);
}

TEST(VtepFilter, AVtepStoredAsFalseIsFilteredOut) {
    EXPECT_EQ(passing({{"10.0.0.1", false}}), 0U);
    EXPECT_EQ(passing({{"10.0.0.1", false}, {"10.0.0.2", true}}), 2U);
}

TEST(VtepFilter, ANullListLetsEverythingOfAReceivedListingThrough) {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1")
        .multipath("HSC", 10, "02:00:00:00:00:02", {"10.0.0.1", "10.0.0.2"})
        .flood("leaf1", 10, "02:00:00:00:00:03", {"10.0.0.2"})
        .host(10, "02:00:00:00:00:04", "10.0.0.1")
        .floodVtep(10, "10.0.0.2");
    auto const command = VxlanController::Cli::vcsVniReceivedFactory(
        fabric.switches, fabric.sources, fabric.evpn.list, false, {}, {}, "", nullptr);
    EXPECT_EQ(rendered(command), receivedText(fabric));
}

TEST(VtepFilter, ANullListLetsEverythingOfAnAdvertisedListingThrough) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("10"), "02:00:00:00:00:01", "10.0.0.1");
    addUnicast(fabric.hsc(20), "02:00:00:00:00:02", "10.0.0.1");
    fabric.evpn.host(30, "02:00:00:00:00:03", "10.0.0.1");
    fabric.evpn.floodVtep(30, "10.0.0.2");
    fabric.evpn.publish();
    for (char const * destination : {"", "hsc", "evpn"}) {
        auto const command = VxlanController::Cli::vcsVniAdvertisedFactory(
            fabric.vniStatusDir, fabric.sources, fabric.evpn.list, false, {}, {}, destination,
            nullptr);
        EXPECT_EQ(rendered(command), advertisedText(fabric, {.source = destination}));
    }
}
