#include "vxshow/state/EthernetSegment.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using state::EthernetSegment;

TEST(EthernetSegment, IsTenBytesInEitherCase) {
    auto const segment = EthernetSegment::tryFromString("03:44:38:39:FF:ff:01:00:00:01");
    ASSERT_TRUE(segment);
    EXPECT_EQ(segment->stringValue(), "03:44:38:39:ff:ff:01:00:00:01");
    EXPECT_FALSE(segment->isZero());
}

TEST(EthernetSegment, ZeroIsNone) {
    EXPECT_TRUE(EthernetSegment().isZero());
    EXPECT_EQ(EthernetSegment::tryFromString("00:00:00:00:00:00:00:00:00:00"), EthernetSegment());
}

TEST(EthernetSegment, AnythingElseIsInvalid) {
    for (auto const * const text :
         {"", "00", "03:44:38:39:ff:ff:01:00:00", "03:44:38:39:ff:ff:01:00:00:01:",
          "03:44:38:39:ff:ff:01:00:00:0g", "03-44-38-39-ff-ff-01-00-00-01",
          "03:44:38:39:ff:ff:01:00:00: 1", "3:444:38:39:ff:ff:01:00:00:01"}) {
        EXPECT_FALSE(EthernetSegment::tryFromString(text)) << text;
    }
}

} // namespace vxshow::test
