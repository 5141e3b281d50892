#include "tests/unit/VxlanController/Fabric.h"

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
