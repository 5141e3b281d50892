#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>

namespace {

/// A state whose per-VNI entries have these names (in JSON notation), and one valid entry.
std::string entriesNamed(std::vector<std::string> const & names) {
    std::string vnis = R"({"vnis":{"10":{"unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1"}},)"
                       R"("arp":{"10.0.0.1":{"mac":"02:00:00:00:00:01"}}})";
    for (std::string const & name : names) {
        vnis += ",\"" + name +
                R"(":{"unicast":{"02:00:00:00:00:02":{"vtep":"10.0.0.2"}},)"
                R"("arp":{"10.0.0.2":{"mac":"02:00:00:00:00:02"}}})";
    }
    return snapshotWith("advertised", vnis + "}}");
}

/// The error that the command `table` `advertised` reports about them, after its name, in each
/// output format.
std::string complaint(std::string const & table, std::vector<std::string> const & names) {
    std::string const state = entriesNamed(names);
    std::string const line = failure(state, {table, "advertised"});
    EXPECT_EQ(failure(state, {"--json", table, "advertised"}), line);
    EXPECT_EQ(failure(state, {"--pretty", table, "advertised"}), line);
    std::string const start = table + " advertised: ";
    EXPECT_EQ(line.substr(0, start.size()), start);
    return line.substr(start.size());
}

bool contains(std::string const & text, std::string const & part) {
    return text.find(part) != std::string::npos;
}

constexpr char const * outOfRange = "': expected a VNI from 0 to 16777215";
constexpr char const * noNumber = "': found no number, expected a VNI in decimal";

} // namespace

TEST(EntryNames, MacAdvertisedReportsANameOutOfRange) {
    for (std::string const name : {"16777216", "4294967296", "-1", " 16777216",
                                   "99999999999999999999", "-99999999999999999999", "16777216x"}) {
        EXPECT_EQ(complaint("mac", {name}), "entry '" + name + outOfRange);
    }
}

TEST(EntryNames, ArpAdvertisedReportsANameOutOfRange) {
    for (std::string const name : {"16777216", "-1", "+16777216", "16777216x"}) {
        EXPECT_EQ(complaint("arp", {name}), "entry '" + name + outOfRange);
    }
    for (std::string const name : {"2147483648", "4294967306", "99999999999999999999"}) {
        EXPECT_EQ(complaint("arp", {name}), "entry '" + name + outOfRange);
    }
}

TEST(EntryNames, ArpAdvertisedReportsANameThatIsNotANumber) {
    for (std::string const name : {"abc", "", " ", "-", "x10", "+ 1"}) {
        EXPECT_EQ(complaint("arp", {name}), "entry '" + name + noNumber);
    }
}

TEST(EntryNames, MacAdvertisedReadsANameThatIsNotANumberAsVni0) {
    for (char const * name : {"abc", "", "-", "x10"}) {
        EXPECT_TRUE(contains(answer(entriesNamed({name}), {"mac", "advertised"}),
                             "0           0200.0000.0002  10.0.0.2            0\n"));
    }
}

TEST(EntryNames, ANameThatBeginsWithAVniIsAccepted) {
    for (char const * name : {"0011", " 11", "+11", "11abc", "11.5"}) {
        auto const state = entriesNamed({name});
        EXPECT_TRUE(contains(answer(state, {"mac", "advertised"}), "11          0200.0000.0002"));
        EXPECT_TRUE(contains(answer(state, {"arp", "advertised"}), "11       10.0.0.2"));
    }
}

TEST(EntryNames, OfSeveralInvalidNamesTheFirstInOrderIsReported) {
    EXPECT_EQ(complaint("mac", {"30000000", "16777217", "9", "abc", "16777216"}),
              std::string("entry '16777216") + outOfRange);
    EXPECT_EQ(complaint("arp", {"xyz", "9", "abc", "def"}), std::string("entry 'abc") + noNumber);
    EXPECT_TRUE(contains(complaint("arp", {"abc", "16777216"}),
                         std::string("entry '16777216") + outOfRange));
}

TEST(EntryNames, AreReportedInPrintableFormAndCutIfLong) {
    EXPECT_EQ(complaint("arp", {R"(\u001b[31m\n\u00e9'\u0000)"}),
              R"(entry '\x1b[31m\x0a\xc3\xa9\'\x00)" + std::string(noNumber));
    EXPECT_EQ(complaint("arp", {std::string(1000, 'a')}),
              "entry '" + std::string(60, 'a') + "'..." + (noNumber + 1));
}

TEST(EntryNames, AreNotReportedByAListingThatDoesNotReadThem) {
    auto const state = entriesNamed({"16777216", "abc"});
    EXPECT_TRUE(contains(answer(state, {"mac", "advertised", "--vni", "10"}), "0200.0000.0001"));
    answer(state, {"mac", "advertised", "--dest", "hsc"});
    answer(state, {"mac", "advertised", "--dest", "evpn"});
    answer(state, {"mac", "received"});
    answer(state, {"arp", "received"});
}

TEST(EntryNames, AreReportedByArpAdvertisedUnderEveryFilter) {
    auto const state = entriesNamed({"abc"});
    for (auto const & filter : std::vector<std::vector<std::string>>{
             {"--vni", "10"}, {"--ip", "10.0.0.1"}, {"--mac", "0200.0000.0001"}}) {
        std::vector<std::string> arguments{"arp", "advertised"};
        arguments.insert(arguments.end(), filter.begin(), filter.end());
        EXPECT_EQ(failure(state, arguments), std::string("arp advertised: entry 'abc") + noNumber);
    }
}
