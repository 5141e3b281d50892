#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace {

/// Thousands of MAC addresses, compared with what other clients print.
class GeneratedDatabase : public testing::Test {
protected:
    static constexpr unsigned vnis = 20;
    static constexpr unsigned macs = 6000;

    static void SetUpTestSuite() {
        if (missingFor(Lab::database)) {
            return;
        }
        lab = std::make_unique<OvsdbLab>();
        lab->fill(vnis, macs);
        folder = std::make_unique<Folder>();
        fabric = folder->write("fabric.toml", FabricText().database("rack1", lab->remote()).text());
    }

    static void TearDownTestSuite() {
        folder.reset();
        lab.reset();
    }

    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::database); }

    static std::unique_ptr<OvsdbLab> lab;
    static std::unique_ptr<Folder> folder;
    static std::string fabric;
};

std::unique_ptr<OvsdbLab> GeneratedDatabase::lab;
std::unique_ptr<Folder> GeneratedDatabase::folder;
std::string GeneratedDatabase::fabric;

/// "MAC VTEP", the MAC address as listings show it.
using Pairs = std::multiset<std::string>;

std::string shownMac(std::string const & colons) {
    std::string digits = colons;
    digits.erase(std::remove(digits.begin(), digits.end(), ':'), digits.end());
    return digits.substr(0, 4) + "." + digits.substr(4, 4) + "." + digits.substr(8);
}

/// Parses lines such as "  02:00:00:00:00:01 -> vxlan_over_ipv4/10.0.0.1".
Pairs pairsOfVtepCtl(std::string const & printed) {
    Pairs pairs;
    for (std::string const & line : linesOf(printed)) {
        std::istringstream words(line);
        std::string mac;
        std::string arrow;
        std::string place;
        if (words >> mac >> arrow >> place && arrow == "->" && mac != "unknown-dst") {
            pairs.insert(shownMac(mac) + " " + place.substr(place.find('/') + 1));
        }
    }
    return pairs;
}

/// The MAC address and VTEP, from column `first` on, of each row except those of flood lists.
Pairs pairsOfListing(std::string const & listing, unsigned first) {
    Pairs pairs;
    for (std::string const & row : rowsOf(listing)) {
        std::istringstream stream(row);
        Words const cells{std::istream_iterator<std::string>(stream), {}};
        if (cells.at(first) != "0000.0000.0000") {
            pairs.insert(cells.at(first) + " " + cells.at(first + 1));
        }
    }
    return pairs;
}

} // namespace

TEST_F(GeneratedDatabase, EveryListingMatchesAnIndependentReaderOfTheRows) {
    expectSameListings({"--fabric", fabric}, expectedSnapshot(*folder, fabric));
}

TEST_F(GeneratedDatabase, LocalMacsAreThoseThatVtepCtlLists) {
    auto const rows =
        pairsOfListing(shown({"--ovsdb", lab->remote(), "mac", "received", "--vni", "10003"}), 2);
    EXPECT_GT(rows.size(), 100U);
    EXPECT_EQ(rows, pairsOfVtepCtl(
                        outputOf({"vtep-ctl", "--db=" + lab->remote(), "list-local-macs", "ls3"})));
}

TEST_F(GeneratedDatabase, RemoteMacsAreThoseThatVtepCtlLists) {
    auto const rows =
        pairsOfListing(shown({"--ovsdb", lab->remote(), "mac", "advertised", "--vni", "10020"}), 1);
    EXPECT_GT(rows.size(), 100U);
    EXPECT_EQ(rows, pairsOfVtepCtl(outputOf(
                        {"vtep-ctl", "--db=" + lab->remote(), "list-remote-macs", "ls20"})));
}

TEST_F(GeneratedDatabase, TheFilterForAVniSelectsAllItsRows) {
    for (Words const & command :
         {Words{"mac", "received"}, {"mac", "advertised"}, {"arp", "advertised"}}) {
        auto const all = rowsOf(shown(Words{"--ovsdb", lab->remote()} + command));
        for (auto const * const vni : {"10001", "10013"}) {
            EXPECT_EQ(
                rowsOf(shown(Words{"--ovsdb", lab->remote()} + command + Words{"--vni", vni})),
                rowsOfVni(all, vni));
        }
    }
}

TEST_F(GeneratedDatabase, TheFilterForAMacSelectsAllItsRows) {
    auto const all = rowsOf(shown({"--ovsdb", lab->remote(), "mac", "advertised"}));
    EXPECT_EQ(
        rowsOf(shown({"--ovsdb", lab->remote(), "mac", "advertised", "--mac", "0200.0000.0010"})),
        rowsWith(all, "0200.0000.0010"));
    EXPECT_EQ(rowsWith(all, "0200.0000.0010").size(), 1U);
}

TEST_F(GeneratedDatabase, ACaptureReplaysEveryListing) {
    auto const path = folder->file("capture.json");
    EXPECT_EQ(shown({"--fabric", fabric, "capture", path}), "");
    expectSameListings({"--fabric", fabric}, path);
}
