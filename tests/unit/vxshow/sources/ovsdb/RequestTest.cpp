#include "tests/unit/vxshow/sources/ovsdb/DatabaseAnswers.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

TEST(Request, TheWholeRequestIsTheOneOfTheCapturedAnswer) {
    auto captured = capture("query-request.json");
    captured.erase(std::remove(captured.begin(), captured.end(), '\n'), captured.end());
    EXPECT_EQ(Request::whole().text(), captured);
}

TEST(Request, TheSurveyIsOneSelect) {
    EXPECT_EQ(Request::survey().text(),
              R"(["hardware_vtep",{"op":"select","table":"Logical_Switch","where":[],)"
              R"("columns":["_uuid","name","tunnel_key"]}])");
}

TEST(Request, ALogicalSwitchIsNamedOnlyInTheSelectsOfTheMacTables) {
    auto const uuid = *sources::ovsdb::readUuid("0f1e2d3c-0bec-47b0-b898-d190f9ebdacc");
    auto const text = Request::of({.logicalSwitches = {{uuid}}}).text();
    std::string_view const where =
        R"("where":[["logical_switch","==",["uuid","0f1e2d3c-0bec-47b0-b898-d190f9ebdacc"]]])";
    std::size_t count = 0;
    for (auto at = text.find(where); at != std::string::npos; at = text.find(where, at + 1)) {
        ++count;
    }
    EXPECT_EQ(count, 4);
    EXPECT_NE(text.find(R"("table":"Logical_Switch","where":[],)"), std::string::npos);
    EXPECT_NE(text.find(R"("table":"Mcast_Macs_Local","where":[["logical_switch",)"),
              std::string::npos);
}

TEST(Request, TooManyLogicalSwitchesAreNotNamed) {
    std::set<sources::ovsdb::Uuid> rows;
    for (Vex::U64 number = 0; number < Request::mostPushed + 1; ++number) {
        rows.insert({1, number});
    }
    EXPECT_EQ(Request::of({.logicalSwitches = rows}).text(), Request::whole().text());
    EXPECT_EQ(Request::of({.logicalSwitches = rows}).pushed(), std::nullopt);
    rows.erase(rows.begin());
    EXPECT_EQ(Request::of({.logicalSwitches = rows}).pushed(), rows);
}

/// How often `part` occurs in `text`.
std::size_t timesIn(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

std::string requestForMac(std::string_view mac) {
    return Request::of({.mac = Nolt::EthAddr::fromString(mac)}).text();
}

TEST(Request, OneSideNamesOnlyTheMacTablesOfThatSide) {
    auto const local = Request::of({.remoteMacs = false}).text();
    EXPECT_EQ(timesIn(local, "Macs_Local"), 2);
    EXPECT_EQ(timesIn(local, "Macs_Remote"), 0);
    auto const remote = Request::of({.localMacs = false}).text();
    EXPECT_EQ(timesIn(remote, "Macs_Local"), 0);
    EXPECT_EQ(timesIn(remote, "Macs_Remote"), 2);
    auto const neither = Request::of({.localMacs = false, .remoteMacs = false}).text();
    EXPECT_EQ(timesIn(neither, "Macs_"), 0);
    EXPECT_EQ(timesIn(neither, "Logical_Router"), 1);
}

TEST(Request, AMacIsNamedWithEachSeparatorOnlyInTheSelectsOfTheMacTables) {
    auto const text = requestForMac("02:00:00:00:00:01");
    for (char const * spelling : {"02:00:00:00:00:01", "02-00-00-00-00-01", "0200.0000.0001"}) {
        auto const where = std::string(R"("where":[["MAC","==",")").append(spelling).append("\"]]");
        EXPECT_EQ(timesIn(text, where), 4) << spelling;
    }
    EXPECT_EQ(timesIn(text, R"("op":"select")"), 8 + 4 * 3);
}

TEST(Request, AMacIsNamedInEveryMixtureOfUpperAndLowerCase) {
    auto const text = requestForMac("02:00:00:00:00:ab");
    for (char const * spelling :
         {"02:00:00:00:00:ab", "02:00:00:00:00:aB", "02:00:00:00:00:Ab", "02:00:00:00:00:AB"}) {
        EXPECT_EQ(timesIn(text, spelling), 4) << spelling;
    }
    EXPECT_EQ(timesIn(text, R"(["MAC","==")"), 4 * 3 * 4);
}

TEST(Request, AMacWithTooManyLettersIsNotNamed) {
    // Four letters have 16 spellings with each separator.
    EXPECT_EQ(timesIn(requestForMac("02:00:00:00:ab:cd"), R"(["MAC","==")"), 4 * 48);
    EXPECT_EQ(requestForMac("02:00:00:0e:ab:cd"), Request::whole().text());
}

TEST(Request, AMacInALogicalSwitchIsNamedWithIt) {
    auto const uuid = *sources::ovsdb::readUuid("0f1e2d3c-0bec-47b0-b898-d190f9ebdacc");
    auto const mac = Nolt::EthAddr::fromString("02:00:00:00:00:01");
    auto const text = Request::of({.logicalSwitches = {{uuid}}, .mac = mac}).text();
    EXPECT_EQ(timesIn(text, R"(["uuid","0f1e2d3c-0bec-47b0-b898-d190f9ebdacc"]],)"
                            R"(["MAC","==","02:00:00:00:00:01"]])"),
              4);
}

TEST(Request, WithTooManyLogicalSwitchesForTheSpellingsTheSpellingsAreNamed) {
    std::set<sources::ovsdb::Uuid> rows;
    for (Vex::U64 number = 0; number < 17; ++number) {
        rows.insert({1, number});
    }
    auto const mac = Nolt::EthAddr::fromString("02:00:00:00:00:01");
    auto const request = Request::of({.logicalSwitches = rows, .mac = mac});
    EXPECT_EQ(request.pushed(), std::nullopt);
    EXPECT_EQ(request.text(), requestForMac("02:00:00:00:00:01"));
}

TEST(Request, ForAMacWithTooManyLettersTheLogicalSwitchesAreNamed) {
    std::set<sources::ovsdb::Uuid> const rows{{1, 1}};
    auto const mac = Nolt::EthAddr::fromString("02:00:00:0e:ab:cd");
    auto const request = Request::of({.logicalSwitches = rows, .mac = mac});
    EXPECT_EQ(request.pushed(), rows);
    EXPECT_EQ(timesIn(request.text(), R"(["MAC","==")"), 0);
}

TEST(Request, TheLongestRequestFitsIntoOneArgument) {
    std::set<sources::ovsdb::Uuid> rows;
    for (Vex::U64 number = 0; number < 16; ++number) {
        rows.insert({1, number});
    }
    auto const mac = Nolt::EthAddr::fromString("02:00:00:00:00:01");
    auto const text = Request::of({.logicalSwitches = rows, .mac = mac}).text();
    EXPECT_EQ(timesIn(text, R"(["MAC","==")"), 4 * 48);
    EXPECT_LT(text.size(), 128 * 1024);
}

} // namespace vxshow::test
