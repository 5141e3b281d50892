#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

TEST(FakeZebra, AMisspeltCommandEndsTheRunWithAComplaint) {
    EXPECT_EQ(FakeZebra().printed(
                  {"show vrf vni json", "show evpn es details json", "show evpn es detail json"}),
              "leaf1# show vrf vni json\n"
              "{}\n"
              "leaf1# show evpn es details json\n"
              "% Unknown command: show evpn es details json\n");
}

TEST(FakeZebra, AMisspeltCommandHasNoAnswer) {
    FakeZebra zebra;
    EXPECT_NONFATAL_FAILURE(zebra["show evpn vni details json"] = "[]", "no command of zebra");
}

} // namespace vxshow::test
