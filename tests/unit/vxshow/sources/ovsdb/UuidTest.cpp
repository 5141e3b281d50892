#include "vxshow/sources/ovsdb/Uuid.h"

#include "Vex/Hash.h"

#include <gtest/gtest.h>

#include <set>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

TEST(OvsdbUuid, IsReadFromItsTextAndWrittenBack) {
    std::string const text = "8e81973e-0bec-47b0-b898-d190f9ebdacc";
    auto const uuid = sources::ovsdb::readUuid(text);
    ASSERT_TRUE(uuid);
    EXPECT_EQ(*uuid, (sources::ovsdb::Uuid{0x8e81973e0bec47b0, 0xb898d190f9ebdacc}));
    EXPECT_EQ(sources::ovsdb::textOf(*uuid), text);
}

TEST(OvsdbUuid, AnyOtherTextIsInvalid) {
    for (auto const * const text :
         {"", "8e81973e-0bec-47b0-b898-d190f9ebdac", "8e81973e-0bec-47b0-b898-d190f9ebdaccc",
          "8e81973e00bec-47b0-b898-d190f9ebdacc", "8e81973g-0bec-47b0-b898-d190f9ebdacc"}) {
        EXPECT_FALSE(sources::ovsdb::readUuid(text)) << text;
    }
}

TEST(OvsdbUuid, AnIdentityHasOneHashPerProcess) {
    sources::ovsdb::Uuid const uuid{1, 2};
    EXPECT_EQ(sources::ovsdb::UuidHash()(uuid), sources::ovsdb::UuidHash()(uuid));
}

// Identities that a hash without a secret puts into one slot.
TEST(OvsdbUuid, IdentitiesChosenToCollideDoNot) {
    constexpr Vex::U64 many = 100'000;
    sources::ovsdb::UuidHash const hash;
    std::set<std::size_t> mixed;
    std::set<std::size_t> hashes;
    for (Vex::U64 low = 0; low < many; ++low) {
        sources::ovsdb::Uuid const uuid{0x1234U ^ Vex::hashMix(low), low};
        mixed.insert(Vex::hashMix(uuid.high ^ Vex::hashMix(uuid.low)));
        hashes.insert(hash(uuid));
    }
    EXPECT_EQ(mixed.size(), 1U);
    EXPECT_GT(hashes.size(), many - many / 100);
}

} // namespace vxshow::test
