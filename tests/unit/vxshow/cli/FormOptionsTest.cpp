#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>

namespace {

/// The example's MAC addresses of one VNI, with these options.
std::string listed(std::vector<std::string> const & options) {
    std::vector<std::string> arguments{"mac", "received", "--vni", "20"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return answer(exampleFabric(), arguments);
}

std::string refusedListing(std::vector<std::string> const & options) {
    std::vector<std::string> arguments{"mac", "received"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return refused(arguments);
}

} // namespace

TEST(FormOptions, TextIsTheDefault) {
    EXPECT_EQ(listed({"-o", "text"}), listed({}));
}

TEST(FormOptions, JsonAndPrettyAreShortForms) {
    EXPECT_EQ(listed({"-o", "json"}), listed({"--json"}));
    EXPECT_EQ(listed({"-o", "pretty"}), listed({"--pretty"}));
    EXPECT_EQ(listed({"--output", "json", "--json"}), listed({"--json"}));
    EXPECT_NE(listed({"--json"}), listed({"--pretty"}));
}

TEST(FormOptions, TwoFormsAreRefused) {
    EXPECT_EQ(refusedListing({"-o", "csv", "--json"}), "-o csv and --json: expected one of them");
    EXPECT_EQ(refusedListing({"--pretty", "-o", "json"}),
              "-o json and --pretty: expected one of them");
    EXPECT_EQ(refusedListing({"-o", "csv", "-o", "csv"}), "--output: given more than once");
}

TEST(FormOptions, AnUnknownFormIsRefusedWithThoseThereAre) {
    EXPECT_EQ(refusedListing({"-o", "xml"}),
              "--output: 'xml': expected text, json, pretty, wide, csv or jsonl");
    EXPECT_EQ(refusedListing({"-o"}), "-o: no value; expected FORM");
    EXPECT_EQ(refusedListing({"-o", ""}),
              "--output: '': expected text, json, pretty, wide, csv or jsonl");
}

TEST(FormOptions, TheOptionsOfRowsAreRefusedWithTheOtherForms) {
    for (std::string const form : {"text", "json", "pretty"}) {
        for (std::vector<std::string> options :
             std::vector<std::vector<std::string>>{{"--columns", "vni"},
                                                   {"--sort", "vni"},
                                                   {"--top", "3"},
                                                   {"--table", "mac"},
                                                   {"--count"},
                                                   {"--no-header"}}) {
            auto const option = options.front();
            options.insert(options.end(), {"-o", form});
            EXPECT_EQ(refusedListing(options),
                      option + ": expected only with -o wide, csv or jsonl");
        }
    }
}

TEST(FormOptions, CommandsWithoutRowsHaveNoFormsOfRows) {
    EXPECT_EQ(refused({"capture", "-", "-o", "csv"}), "-o csv: not available for capture");
    EXPECT_EQ(refused({"model", "MacVtep", "-o", "wide"}), "-o wide: not available for model");
}

TEST(FormOptions, ColumnsAreShownInTheOrderInWhichTheyAreNamed) {
    EXPECT_EQ(listed({"-o", "csv", "--columns", "macAddr,vni", "--columns=source", "--top", "1"}),
              "macAddr,vni,source\r\n00:00:5e:00:53:21,20,leaf1\r\n");
}

TEST(FormOptions, AnUnknownColumnIsRefusedWithTheColumnsThereAre) {
    EXPECT_EQ(refusedListing({"-o", "csv", "--columns", "vni,port"}),
              "--columns: 'port': expected a column: source, vni, macAddr, vtepIp, moveCount "
              "(mac); source, vni, macAddr, vtepIp, vtepIpListType (flood)");
    EXPECT_EQ(refused({"router", "map", "-o", "csv", "--sort", "-vni"}),
              "--sort: 'vni': expected a column: router, vtepIp, switchId");
    EXPECT_EQ(refusedListing({"-o", "csv", "--columns", "vni,"}),
              "--columns: '': expected names of columns, with commas between them");
}

TEST(FormOptions, RowsAreSortedBySeveralColumns) {
    EXPECT_EQ(listed({"-o", "csv", "--columns", "moveCount,macAddr", "--sort", "-moveCount,macAddr",
                      "--top", "4"}),
              "moveCount,macAddr\r\n"
              "12,00:00:5e:00:53:24\r\n"
              "5,00:00:5e:00:53:91\r\n"
              "1,00:00:5e:00:53:22\r\n"
              "0,00:00:5e:00:53:21\r\n");
}

TEST(FormOptions, RowsCanBeCounted) {
    EXPECT_EQ(listed({"-o", "wide", "--count"}), "Table  Count\n"
                                                 "mac        8\n"
                                                 "flood      6\n");
    EXPECT_EQ(listed({"-o", "csv", "--count", "--no-header"}), "8\r\n");
}

TEST(FormOptions, TopIsAtLeastOne) {
    EXPECT_EQ(refusedListing({"-o", "csv", "--top", "0"}),
              "--top: '0': expected a whole number from 1 to 4294967295");
}
