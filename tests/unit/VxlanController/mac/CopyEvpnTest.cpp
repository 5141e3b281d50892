#include "tests/unit/VxlanController/Fabric.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace Cli = VxlanController::Cli;

namespace {

/// The EVPN rows of a listing, "VNI MAC>VTEP*MOVES" for hosts and "VNI MAC~ VTEPS" for flood
/// lists.
std::string evpnOf(Fabric const & fabric, MacFilter const & filter = {}) {
    auto const command = receivedCommand(fabric, filter);
    command->initialize();
    auto const evpn = command->nonSwitchSourceDir()->switchList("EVPN");
    if (!evpn) {
        return "nothing";
    }
    std::string text;
    for (Cli::VniStatus const & status : evpn->vniStatusList()->vniEntry()) {
        std::string const vni = status.vni().stringValue();
        for (auto const & entry : status.macVtepTable()) {
            text += vni + " " + entry.macAddr().displayString() + ">" +
                    entry.vtepIp().stringValue() + "*" + entry.moveCount().stringValue() + "\n";
        }
        for (auto const & list : status.macVtepFloodListTable()) {
            text += vni + " " + list.macAddr().displayString() + "~";
            for (Nolt::IpAddr ip : list.vtepIpFloodList()) {
                text += " " + ip.stringValue();
            }
            text += "\n";
        }
    }
    return text;
}

Fabric evpnFabric() {
    Fabric fabric;
    fabric.host(10, "02:00:00:00:00:01", "10.8.0.1", 4)
        .host(20, "02:00:00:00:00:01", "10.8.0.2")
        .floodVtep(10, "10.8.0.2")
        .floodVtep(10, "10.8.0.1")
        .floodVtep(30, "10.8.0.1");
    return fabric;
}

/// Flips the bits of one byte of a table's memory, as a stray write would.
void damage(int descriptor, off_t at) {
    unsigned char byte = 0;
    ASSERT_EQ(pread(descriptor, &byte, 1, at), 1);
    byte = static_cast<unsigned char>(~byte);
    ASSERT_EQ(pwrite(descriptor, &byte, 1, at), 1);
}

off_t sizeOf(int descriptor) {
    return lseek(descriptor, 0, SEEK_END);
}

} // namespace

TEST(CopyEvpn, FloodVtepsOfOneVniFormOneListUnderTheZeroMac) {
    EXPECT_EQ(evpnOf(evpnFabric()), "10 0200.0000.0001>10.8.0.1*4\n"
                                    "10 0000.0000.0000~ 10.8.0.1 10.8.0.2\n"
                                    "20 0200.0000.0001>10.8.0.2*0\n"
                                    "30 0000.0000.0000~ 10.8.0.1\n");
}

TEST(CopyEvpn, AMacFilterExcludesEveryFloodEntry) {
    EXPECT_EQ(evpnOf(evpnFabric(), {.mac = "02:00:00:00:00:01"}),
              "10 0200.0000.0001>10.8.0.1*4\n20 0200.0000.0001>10.8.0.2*0\n");
    EXPECT_EQ(evpnOf(evpnFabric(), {.mac = "02:00:00:00:00:02"}), "nothing");
}

TEST(CopyEvpn, VniAndVtepFiltersApplyToBothTables) {
    EXPECT_EQ(evpnOf(evpnFabric(), {.vni = Vxlan::Vni(30)}), "30 0000.0000.0000~ 10.8.0.1\n");
    EXPECT_EQ(evpnOf(evpnFabric(), {.vteps = {{"10.8.0.2", true}}}),
              "10 0000.0000.0000~ 10.8.0.2\n20 0200.0000.0001>10.8.0.2*0\n");
}

TEST(CopyEvpn, DeadSlotsAreSkipped) {
    Fabric fabric;
    fabric.host(10, "02:00:00:00:00:01", "0.0.0.0", 0);
    fabric.evpn.floodVteps.insert({Vxlan::Vni(10), Nolt::IpAddr(1)}, VcsEvpn::FloodEntry());
    fabric.evpn.publish();
    EXPECT_EQ(evpnOf(fabric), "nothing");
}

TEST(CopyEvpn, ANullTableOfThePairIsSkipped) {
    Fabric fabric = evpnFabric();
    auto const pair = Cli::hostFloodTableFactory();
    pair->floodTableIs(fabric.evpn.floodVteps.table());
    fabric.evpn.list->hostFloodTableIs("EVPN", pair);
    EXPECT_EQ(evpnOf(fabric), "10 0000.0000.0000~ 10.8.0.1 10.8.0.2\n"
                              "30 0000.0000.0000~ 10.8.0.1\n");
}

TEST(CopyEvpn, ADamagedHostTableEndsItsCopyAndTheFloodTableIsStillCopied) {
    Fabric fabric;
    for (int i = 0; i < 100; ++i) {
        std::string const mac = "02:00:00:00:00:" + std::to_string(i / 10) + std::to_string(i % 10);
        fabric.host(10, mac.c_str(), "10.8.0.1");
    }
    fabric.floodVtep(10, "10.8.0.2");
    auto const table = fabric.evpn.hosts.table();
    std::string message;
    table->corruptionHandlerIs([&](std::string_view text) { message = text; });

    // Only the last slots are damaged, so that those before them have been copied by then.
    int const descriptor = fabric.evpn.hosts.descriptor();
    off_t const size = sizeOf(descriptor);
    for (off_t at = size - size / 4; at < size; ++at) {
        damage(descriptor, at);
    }
    std::string const text = receivedText(fabric);
    EXPECT_EQ(table->corruptions(), 1U);
    EXPECT_NE(message.find("table 'hosts'"), std::string::npos) << message;
    EXPECT_NE(text.find("10.8.0.2"), std::string::npos) << text;
    EXPECT_NE(text.find("0200.0000.00"), std::string::npos) << "nothing was kept";
    EXPECT_EQ(text.find(message), std::string::npos);
}

TEST(CopyEvpn, ADamagedFloodTableKeepsTheHosts) {
    Fabric fabric = evpnFabric();
    int const descriptor = fabric.evpn.floodVteps.descriptor();
    off_t const size = sizeOf(descriptor);
    for (off_t at = size / 2; at < size; ++at) {
        damage(descriptor, at);
    }
    std::string const text = evpnOf(fabric);
    EXPECT_EQ(fabric.evpn.floodVteps.table()->corruptions(), 1U);
    EXPECT_NE(text.find("10 0200.0000.0001>10.8.0.1*4\n"), std::string::npos) << text;
    EXPECT_NE(text.find("20 0200.0000.0001>10.8.0.2*0\n"), std::string::npos) << text;
}
