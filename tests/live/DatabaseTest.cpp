#include "tests/live/Database.h"

#include <gtest/gtest.h>

TEST_F(Database, TheReceivedMacAddresses) {
    EXPECT_EQ(listing({"mac", "received"}),
              "         Received Mac Address Table\n"
              "---------------------------------------------------------------------\n"
              "\n"
              "Source            VNI         Mac Address       VTEP            Moves\n"
              "----------------- ----------- ----------------- --------------- -----\n"
              "leaf1             5001        0000.5e00.5301  10.0.0.1            0\n"
              "leaf1             5001        0000.5e00.5302  10.0.0.1            0\n"
              "leaf1             5002        0000.5e00.5305  10.0.0.1            0\n"
              "leaf1             5002        0000.5e00.5306  10.0.0.1            0\n"
              "leaf1             5002        0000.5e00.5307  10.0.0.1            0\n"
              "leaf1             5003        0000.5e00.5308  10.0.0.1            0\n"
              "leaf1             5003        0000.5e00.5309  10.0.0.1            0\n"
              "leaf2             5001        0000.5e00.5303  10.0.0.2            0\n"
              "leaf2             5001        0000.5e00.5304  10.0.0.12           0\n"
              "leaf2             5001        0000.5e00.530a  10.0.0.12           0\n"
              "Total Mac Addresses for this criterion: 10\n"
              "\n"
              "         Received Flood Table\n"
              "---------------------------------------------------------------------\n"
              "\n"
              "Source            VNI         Mac Address       VTEP\n"
              "----------------- ----------- ----------------- ---------------------\n"
              "leaf1             5001        0000.0000.0000  10.0.0.1       \n"
              "leaf1             5002        0000.0000.0000  10.0.0.1       \n"
              "leaf1             5003        0000.0000.0000  10.0.0.1       \n"
              "leaf2             5001        0000.0000.0000  10.0.0.2       \n"
              "leaf2             5001        0000.0000.0000  10.0.0.12      \n"
              "Total Mac Addresses for this criterion: 5\n");
}

TEST_F(Database, TheAdvertisedMacAddresses) {
    EXPECT_EQ(listing({"mac", "advertised"}),
              "            Advertised Mac Address Table\n"
              "-----------------------------------------------------------------------------\n"
              "\n"
              "VNI         Mac Address       VTEP            Moves\n"
              "----------- ----------------- --------------- -----\n"
              "5001        0000.5e00.5311  10.1.0.1            0\n"
              "5001        0000.5e00.5312  10.1.0.1            0\n"
              "5001        0000.5e00.5313  10.1.0.2            0\n"
              "5001        0000.5e00.531a  10.1.0.2            0\n"
              "5001        0000.5e00.531d  10.1.0.4            0\n"
              "5002        0000.5e00.5315  10.1.0.1            0\n"
              "5002        0000.5e00.5316  10.1.0.3            0\n"
              "5002        0000.5e00.5317  10.1.0.3            0\n"
              "5003        0000.5e00.5319  10.1.0.2            0\n"
              "5003        0000.5e00.531b  10.1.0.3            0\n"
              "5003        0000.5e00.531c  10.1.0.3            0\n"
              "Total Mac Addresses for this criterion: 11\n"
              "\n"
              "            Advertised Flood Table\n"
              "---------------------------------------------------\n"
              "\n"
              "VNI         Mac Address       VTEP(s)\n"
              "----------- ----------------- -----------------------------------------------\n"
              "5001        0000.0000.0000  10.1.0.1        10.1.0.2        10.1.0.3       \n"
              "                              10.1.0.4       \n"
              "5001        0100.5e01.0203  10.1.0.1        10.1.0.2       \n"
              "5002        0000.5e00.5318  10.1.0.2        10.1.0.3       \n"
              "5002        0000.0000.0000  10.1.0.2        10.1.0.9       \n"
              "5003        0000.0000.0000  10.1.0.2        10.1.0.3       \n"
              "Total Mac Addresses for this criterion: 5\n");
}

TEST_F(Database, TheReceivedArpEntries) {
    EXPECT_EQ(listing({"arp", "received"}),
              "                        Received ARP Table\n"
              "-------------------------------------------------------------------------\n"
              "Switch              VNI      IP Address      MAC Address        Changes\n"
              "------------------- -------- --------------- ------------------ ---------\n"
              "leaf1               5001     192.168.1.11    0000.5e00.5301     0        \n"
              "leaf1               5002     192.168.2.15    0000.5e00.5305     0        \n"
              "leaf1               5002     2001:db8:2::17  0000.5e00.5307     0        \n"
              "leaf1               5003     192.168.3.18    0000.5e00.5308     0        \n"
              "leaf2               5001     192.168.1.13    0000.5e00.5303     0        \n"
              "\n"
              "Total IP addresses for this criterion: 5\n");
}

TEST_F(Database, TheAdvertisedArpEntries) {
    EXPECT_EQ(listing({"arp", "advertised"}),
              "                       Advertised ARP Table\n"
              "-------------------------------------------------------------------------\n"
              "VNI      IP Address      MAC Address        Changes\n"
              "-------- --------------- ------------------ --------\n"
              "5001     192.168.1.21    0000.5e00.5311     0        \n"
              "5001     192.168.1.23    0000.5e00.5313     0        \n"
              "5001     239.1.2.3       0100.5e01.0203     0        \n"
              "5002     192.168.2.25    0000.5e00.5315     0        \n"
              "5002     192.168.2.27    0000.5e00.5317     0        \n"
              "5002     192.168.2.28    0000.5e00.5318     0        \n"
              "5003     192.168.3.29    0000.5e00.5319     0        \n"
              "\n"
              "Total IP addresses for this criterion: 7\n");
}

TEST_F(Database, TheMapOfRouters) {
    EXPECT_EQ(listing({"router", "map"}),
              "--------------------------------------------------------------------------------\n"
              "Name                                           VTEP            Switch           \n"
              "--------------------------------------------------------------------------------\n"
              "tenant1                                        10.0.0.1        00:1c:73:00:00:01\n"
              "                                               10.0.0.12       00:1c:73:00:00:02\n"
              "\n"
              "Total entries for this criterion: 2\n"
              "\n");
}

TEST_F(Database, TheRouters) {
    EXPECT_EQ(
        listing({"router", "detail"}),
        "--------------------------------------------------------------------------------\n"
        "Name                                              IP Address         VNI        \n"
        "--------------------------------------------------------------------------------\n"
        "tenant1                                           192.168.1.1/24     5001       \n"
        "                                                  192.168.2.1/24     5002       \n"
        "                                                  2001:db8:2::1/64   5002       \n"
        "\n"
        "Total entries for this criterion: 3\n"
        "\n"
        "Uplink ports:\n"
        "--------------------------------------------------------------------------------\n"
        "Name        IP Address         Switch            Vlan Ports                         \n"
        "--------------------------------------------------------------------------------\n"
        "\n"
        "Total entries for this criterion: 0\n"
        "\n");
}

TEST_F(Database, TheRoutes) {
    EXPECT_EQ(listing({"router", "routes"}),
              "--------------------------------------------------------------------------------\n"
              "Name        Prefix             Nexthop                                          \n"
              "--------------------------------------------------------------------------------\n"
              "tenant1     0.0.0.0/0          192.168.1.254                                    \n"
              "            10.10.0.0/16       192.168.2.254                                    \n"
              "\n"
              "Total entries for this criterion: 2\n"
              "\n");
}

TEST_F(Database, TheOptionForOneDatabaseShowsTheSame) {
    auto const named = Words{"--ovsdb", lab->remote()};
    EXPECT_EQ(shown(named + Words{"mac", "received"}), listing({"mac", "received"}));
    EXPECT_EQ(shown(named + Words{"mac", "advertised"}), listing({"mac", "advertised"}));
    EXPECT_EQ(shown(named + Words{"router", "routes"}), listing({"router", "routes"}));
}

TEST_F(Database, ATcpPortShowsTheSame) {
    EXPECT_EQ(shown({"--ovsdb", lab->tcpRemote(), "mac", "received"}),
              listing({"mac", "received"}));
}

TEST_F(Database, TheEnvironmentCanNameTheFabric) {
    Process::Setting setting;
    setting.inChild = [] { setenv("VXSHOW_FABRIC", fabric.c_str(), 1); };
    auto const finished = runVxshow({"mac", "advertised"}, setting);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out, listing({"mac", "advertised"}));
}

TEST_F(Database, EveryListingMatchesAnIndependentReaderOfTheRows) {
    expectSameListings({"--fabric", fabric}, expectedSnapshot(*folder, fabric));
}

TEST_F(Database, ACaptureReplaysEveryListing) {
    auto const path = folder->file("capture.json");
    EXPECT_EQ(shown({"--fabric", fabric, "capture", path}), "");
    expectSameListings({"--fabric", fabric}, path);
}

TEST_F(Database, AsHscItsRemoteEntriesAreReceived) {
    FabricText text;
    text.database("hsc", lab->remote(), "role = 'hsc'");
    auto const hsc = folder->write("hsc.toml", text.text());
    expectSameListings({"--fabric", hsc}, expectedSnapshot(*folder, hsc));
    auto const received = shown({"--fabric", hsc, "mac", "received", "--source", "hsc"});
    EXPECT_EQ(rowsWith(rowsOf(received), "0000.5e00.531d"),
              Words{"HSC               5001        0000.5e00.531d  10.1.0.4            0"});
}

TEST_F(Database, AsQvxItsRemoteEntriesAreReceived) {
    FabricText text;
    text.database("qvx", lab->remote(), "role = 'qvx'");
    auto const qvx = folder->write("qvx.toml", text.text());
    expectSameListings({"--fabric", qvx}, expectedSnapshot(*folder, qvx));
}

TEST_F(Database, AsEvpnItFillsTheSharedTables) {
    FabricText text;
    text.database("evpn", lab->remote(), "role = 'evpn'");
    auto const evpn = folder->write("evpn.toml", text.text());
    expectSameListings({"--fabric", evpn}, expectedSnapshot(*folder, evpn));
}
