#include "state/FloodTable.h"

#include "Pelo/Errors.h"
#include "state/HostTable.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace VcsEvpn {
namespace {

using Entries = std::map<FloodKey, FloodEntry>;

FloodKey key(Vex::U32 vni, std::string_view vtep) {
    return {Vxlan::Vni(vni), Nolt::IpAddr::fromString(vtep)};
}

FloodEntry const replicated(FloodEntry::TunnelType::ingressReplication);

Entries contents(FloodTable const & table) {
    Entries entries;
    for (FloodKey const & met : table) {
        EXPECT_TRUE(entries.emplace(met, table.floodEntry(met)).second);
    }
    return entries;
}

Entries const sampleFloods{
    {key(10, "10.0.0.1"), replicated},
    {key(10, "10.0.0.2"), replicated},
    {key(11, "10.0.0.1"), replicated},
    {key(0, "0.0.0.0"), replicated},
    {key(0xFFFFFF, "255.255.255.255"), replicated},
    {key(0x010203, "4.5.6.7"), replicated},
};

FloodTableWriter filledFloods() {
    FloodTableWriter writer("flood");
    for (auto const & [floodKey, entry] : sampleFloods) {
        writer.insert(floodKey, entry);
    }
    return writer;
}

TEST(FloodTable, ReturnsEveryEntry) {
    auto const writer = filledFloods();
    EXPECT_EQ(contents(*writer.table()), sampleFloods);
}

TEST(FloodTable, AnAbsentKeyHasADefaultEntry) {
    auto const writer = filledFloods();
    EXPECT_EQ(writer.table()->floodEntry(key(11, "10.0.0.2")), FloodEntry());
    EXPECT_NE(writer.table()->floodEntry(key(11, "10.0.0.1")), FloodEntry());
}

TEST(FloodTable, AWalkReachesADeadSlotWithADefaultEntry) {
    FloodTableWriter writer("flood");
    writer.insert(key(10, "10.0.0.1"), FloodEntry());
    EXPECT_EQ(contents(*writer.table()), (Entries{{key(10, "10.0.0.1"), FloodEntry()}}));
}

TEST(FloodTable, AWalkDoesNotReachAnErasedEntry) {
    auto writer = filledFloods();
    auto expected = sampleFloods;
    writer.erase(key(10, "10.0.0.2"));
    expected.erase(key(10, "10.0.0.2"));
    EXPECT_EQ(contents(*writer.table()), expected);
}

TEST(FloodTable, OpensADescriptorUnlessItIsAnotherKindOfTable) {
    Vex::Ptr<FloodTable const> const table = openFloodTable(filledFloods().descriptor(), "copy");
    EXPECT_EQ(contents(*table), sampleFloods);
    HostTableWriter const hosts("hosts");
    EXPECT_THROW(openFloodTable(hosts.descriptor(), "t"), Pelo::TableError);
}

TEST(FloodTable, EveryChangedByteOfTheSlotsIsDetected) {
    auto const writer = filledFloods();

    struct stat status {};

    ASSERT_EQ(::fstat(writer.descriptor(), &status), 0);
    for (auto offset = static_cast<off_t>(Pelo::headerSize); offset < status.st_size; ++offset) {
        Vex::U8 good = 0;
        ASSERT_EQ(::pread(writer.descriptor(), &good, 1, offset), 1);
        auto const bad = static_cast<Vex::U8>(~good);
        ASSERT_EQ(::pwrite(writer.descriptor(), &bad, 1, offset), 1);
        EXPECT_THROW(contents(*writer.table()), Pelo::CorruptionDetectedException) << offset;
        ASSERT_EQ(::pwrite(writer.descriptor(), &good, 1, offset), 1);
    }
    EXPECT_EQ(contents(*writer.table()), sampleFloods);
}

TEST(FloodTable, CountsReportsOfDamage) {
    auto const writer = filledFloods();
    Vex::Ptr<FloodTable const> const table = writer.table();
    table->handleCorruption("message");
    EXPECT_EQ(table->corruptions(), 1U);
}

} // namespace
} // namespace VcsEvpn
