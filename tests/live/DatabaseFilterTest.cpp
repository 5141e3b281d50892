#include "tests/live/Database.h"

#include <gtest/gtest.h>

namespace {

/// A filtered query shows exactly the rows of a full one that match.
class DatabaseFilter : public Database {
protected:
    /// Expects the rows of each listing with `filter` to be those that `restricted` keeps of all.
    void expectRestricted(Words const & filter, std::function<Words(Words const &)> restricted) {
        for (Words const & command : listings()) {
            if (command[0] != "router") {
                EXPECT_EQ(rowsOf(listing(command + filter)), restricted(rowsOf(listing(command))))
                    << command[0] << " " << command[1] << " " << filter[1];
            }
        }
    }

    void expectOfVni(std::string const & text, std::string const & vni) {
        expectRestricted({"--vni", text}, [&](Words const & all) { return rowsOfVni(all, vni); });
    }

    void expectOfMac(std::string const & text, std::string const & mac) {
        expectRestricted({"--mac", text}, [&](Words const & all) { return rowsWith(all, mac); });
    }
};

} // namespace

TEST_F(DatabaseFilter, AVniOfALogicalSwitch) {
    expectOfVni("5001", "5001");
    expectOfVni("5002", "5002");
}

TEST_F(DatabaseFilter, AVniOfLocators) {
    expectOfVni("5003", "5003");
}

TEST_F(DatabaseFilter, ADottedVni) {
    expectOfVni("0.19.137", "5001");
}

TEST_F(DatabaseFilter, AnUnknownVni) {
    expectOfVni("77", "77");
}

TEST_F(DatabaseFilter, AMacStoredInUpperCase) {
    expectOfMac("00:00:5e:00:53:1a", "0000.5e00.531a");
    expectOfMac("00:00:5E:00:53:1D", "0000.5e00.531d");
    EXPECT_EQ(rowsOf(listing({"mac", "advertised", "--mac", "0000.5e00.531a"})).size(), 1U);
}

TEST_F(DatabaseFilter, AMacInEachForm) {
    for (auto const * const text :
         {"00:00:5e:00:53:01", "00-00-5E-00-53-01", "0000.5e00.5301", "0000.5E00.5301"}) {
        expectOfMac(text, "0000.5e00.5301");
    }
}

TEST_F(DatabaseFilter, AMacBehindSeveralVteps) {
    expectOfMac("00:00:5e:00:53:18", "0000.5e00.5318");
}

TEST_F(DatabaseFilter, AMacInOneVni) {
    auto const rows = rowsWith(rowsOf(listing({"mac", "received"})), "0000.5e00.5305");
    EXPECT_EQ(rows.size(), 1U);
    EXPECT_EQ(rowsOf(listing({"mac", "received", "--vni", "5002", "--mac", "0000.5e00.5305"})),
              rows);
    EXPECT_EQ(rowsOf(listing({"mac", "received", "--vni", "5001", "--mac", "0000.5e00.5305"})),
              Words{});
}

TEST_F(DatabaseFilter, EveryOtherFilterWorksAsOnTheSnapshot) {
    auto const state = expectedSnapshot(*folder, fabric);
    std::vector<Words> const filtered{
        {"mac", "received", "--source", "leaf2"},
        {"mac", "received", "--source", "all"},
        {"mac", "received", "--source", "hsc"},
        {"mac", "received", "--vtep", "10.0.0.12"},
        {"mac", "advertised", "--dest", "hsc"},
        {"mac", "advertised", "--vtep", "10.1.0.3", "--vtep", "10.1.0.9"},
        {"mac", "advertised", "--vni", "5002", "--vtep", "10.1.0.3"},
        {"arp", "received", "--switch", "leaf1"},
        {"arp", "received", "--ip", "2001:db8:2:0::17"},
        {"arp", "advertised", "--ip", "239.1.2.3", "--vni", "5001"},
        {"router", "map", "--router", "tenant1"},
        {"router", "map", "--vtep", "10.0.0.2"},
        {"router", "map", "--switch", "00:1c:73:00:00:02"},
        {"router", "detail", "--router", "tenant1"},
        {"router", "routes", "--prefix", "10.10.0.0/16"},
    };
    for (Words const & words : filtered) {
        EXPECT_EQ(listing(words), shown(Words{"--state", state} + words)) << words[2] << words[3];
    }
}
