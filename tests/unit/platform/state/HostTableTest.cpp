#include "state/HostTable.h"

#include "Pelo/Errors.h"
#include "state/FloodTable.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace VcsEvpn {
namespace {

using Hosts = std::map<HostKey, Host>;

HostKey key(std::string_view mac, Vex::U32 vni) {
    return {Nolt::EthAddr::fromString(mac), Vxlan::Vni(vni)};
}

Host host(std::string_view vtep, Vex::U32 moves) {
    return {Nolt::IpAddr::fromString(vtep), moves};
}

// All hosts as a reader of the published table sees them.
Hosts contents(HostTable const & table) {
    Hosts hosts;
    for (HostKey const & met : table) {
        EXPECT_TRUE(hosts.emplace(met, table.host(met)).second);
    }
    return hosts;
}

Hosts const sampleHosts{
    {key("02:00:00:00:00:01", 10), host("10.0.0.1", 0)},
    {key("02:00:00:00:00:01", 11), host("10.0.0.2", 3)},
    {key("02:00:00:00:00:02", 10), host("10.0.0.1", 0xFFFFFFFF)},
    {key("00:00:00:00:00:00", 0), host("0.0.0.0", 1)},
    {key("ff:ff:ff:ff:ff:ff", 0xFFFFFF), host("255.255.255.255", 7)},
    {key("01:23:45:67:89:ab", 0x010203), host("1.2.3.4", 0x01020304)},
};

HostTableWriter filledHosts() {
    HostTableWriter writer("hosts");
    for (auto const & [hostKey, value] : sampleHosts) {
        writer.insert(hostKey, value);
    }
    return writer;
}

TEST(HostTable, ReturnsEveryHost) {
    auto const writer = filledHosts();
    EXPECT_EQ(contents(*writer.table()), sampleHosts);
    EXPECT_EQ(writer.table()->size(), sampleHosts.size());
}

TEST(HostTable, AnAbsentKeyHasADefaultHost) {
    auto const writer = filledHosts();
    EXPECT_EQ(writer.table()->host(key("02:00:00:00:00:03", 10)), Host());
    EXPECT_EQ(writer.table()->host(key("02:00:00:00:00:02", 11)), Host());
}

TEST(HostTable, AWalkReachesADeadSlotWithADefaultHost) {
    HostTableWriter writer("hosts");
    writer.insert(key("02:00:00:00:00:01", 10), Host());
    EXPECT_EQ(contents(*writer.table()), (Hosts{{key("02:00:00:00:00:01", 10), Host()}}));
}

TEST(HostTable, AWalkDoesNotReachAnErasedHostUntilItIsInsertedAgain) {
    auto writer = filledHosts();
    auto expected = sampleHosts;
    auto const gone = key("02:00:00:00:00:01", 10);
    writer.erase(gone);
    expected.erase(gone);
    EXPECT_EQ(contents(*writer.table()), expected);
    EXPECT_EQ(writer.table()->host(gone), Host());
    writer.insert(gone, host("10.0.0.9", 1));
    expected.emplace(gone, host("10.0.0.9", 1));
    EXPECT_EQ(contents(*writer.table()), expected);
}

TEST(HostTable, AHostErasedDuringAWalkIsADeadSlot) {
    auto writer = filledHosts();
    for (HostKey const & met : *writer.table()) {
        writer.erase(met);
        EXPECT_EQ(writer.table()->host(met), Host());
    }
    EXPECT_EQ(writer.size(), 0U);
}

TEST(HostTable, HoldsManyHosts) {
    HostTableWriter writer("hosts");
    Hosts expected;
    for (Vex::U32 number = 0; number < 50'000; ++number) {
        Nolt::EthAddr::Bytes const mac{
            2, 0, 0, 0, static_cast<Vex::U8>(number >> 8), static_cast<Vex::U8>(number)};
        HostKey const hostKey{Nolt::EthAddr(mac), Vxlan::Vni(number % 100)};
        Host const value(Nolt::IpAddr(0x0a000000 + number), number);
        writer.insert(hostKey, value);
        expected.emplace(hostKey, value);
    }
    EXPECT_EQ(contents(*writer.table()), expected);
}

TEST(HostTable, HostsDifferInEveryField) {
    EXPECT_EQ(host("10.0.0.1", 1), host("10.0.0.1", 1));
    EXPECT_NE(host("10.0.0.1", 1), host("10.0.0.2", 1));
    EXPECT_NE(host("10.0.0.1", 1), host("10.0.0.1", 2));
    EXPECT_EQ(Host(), host("0.0.0.0", 0));
}

TEST(HostTable, AHostTakesThirtyTwoBytes) {
    EXPECT_EQ(Pelo::formatOf<HostSchema>.slotSize(), 32U);
}

TEST(HostTable, IsOpenedFromADescriptorAndOutlivesTheWriter) {
    Vex::Ptr<HostTable const> table;
    {
        auto const writer = filledHosts();
        table = openHostTable(writer.descriptor(), "copy");
    }
    EXPECT_EQ(table->name(), "copy");
    EXPECT_EQ(contents(*table), sampleHosts);
}

TEST(HostTable, IsOpenedFromAFile) {
    std::string directory = (std::filesystem::temp_directory_path() / "evpn.XXXXXX").string();
    ASSERT_NE(::mkdtemp(directory.data()), nullptr);
    auto const path = directory + "/hosts";
    HostTableWriter::inFile(path).insert(key("02:00:00:00:00:01", 10), host("10.0.0.1", 2));
    auto const table = openHostTable(path);
    EXPECT_EQ(contents(*table), (Hosts{{key("02:00:00:00:00:01", 10), host("10.0.0.1", 2)}}));
    EXPECT_THROW(openFloodTable(path), Pelo::TableError);
    EXPECT_THROW(openHostTable(directory), Pelo::TableError);
    std::filesystem::remove_all(directory);
    EXPECT_THROW(openHostTable(path), Pelo::TableError);
}

TEST(HostTable, ATableOfFloodEntriesIsNotAHostTable) {
    FloodTableWriter const flood("flood");
    try {
        openHostTable(flood.descriptor(), "t");
        FAIL() << "opened";
    } catch (Pelo::TableError const & error) {
        EXPECT_STREQ(error.what(),
                     "table 't': holds 'VcsEvpn::FloodTable', expected 'VcsEvpn::HostTable'");
    }
}

TEST(HostTable, EveryChangedByteOfTheSlotsIsDetected) {
    auto const writer = filledHosts();

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
    EXPECT_EQ(contents(*writer.table()), sampleHosts);
}

TEST(HostTable, ReportsDamageToItsHandler) {
    auto const writer = filledHosts();
    std::string heard;
    writer.table()->corruptionHandlerIs([&](std::string_view message) { heard = message; });
    Vex::Ptr<HostTable const> const table = writer.table();
    Vex::U8 const garbage[] = {1, 2, 3, 4, 5, 6, 7, 8};
    ASSERT_EQ(::pwrite(writer.descriptor(), garbage, sizeof garbage, Pelo::headerSize), 8);
    try {
        contents(*table);
        FAIL() << "not noticed";
    } catch (Pelo::CorruptionDetectedException const & error) {
        table->handleCorruption(error.what());
    }
    EXPECT_EQ(table->corruptions(), 1U);
    EXPECT_TRUE(heard.starts_with("table 'hosts', slot 0: checksum 0x807060504030201, expected 0x"))
        << heard;
}

TEST(HostTable, IsATrackedEntity) {
    auto const before = Vex::allocTrackLiveCount("VcsEvpn::HostTable");
    {
        HostTableWriter const writer("hosts");
        Vex::Ptr<Vex::Entity const> const entity = writer.table();
        EXPECT_EQ(Vex::dynamicPtr<HostTable const>(entity), writer.table());
        EXPECT_EQ(Vex::allocTrackLiveCount("VcsEvpn::HostTable"), before + 1);
    }
    EXPECT_EQ(Vex::allocTrackLiveCount("VcsEvpn::HostTable"), before);
}

TEST(HostTable, ACopyKeepsWhatTheTableHeld) {
    auto writer = filledHosts();
    auto const copy = copyHostTable(writer.descriptor(), "copy");
    writer.insert(key("02:00:00:00:00:01", 10), host("10.0.0.9", 7));
    EXPECT_EQ(copy->name(), "copy");
    EXPECT_EQ(contents(*copy), sampleHosts);
    EXPECT_THROW(copyFloodTable(writer.descriptor(), "t"), Pelo::TableError);
}

} // namespace
} // namespace VcsEvpn
