#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/OnTerminal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fcntl.h>
#include <regex>
#include <unistd.h>

namespace {

std::string example(std::vector<std::string> const & arguments) {
    return answer(exampleFabric(), arguments);
}

std::vector<std::string> formOf(TemporaryFile const & state, std::string const & form) {
    return {"--state", state.path(), "mac", "received", "-o", form};
}

/// A state with one switch, whose name is `name` in JSON.
std::string stateWithSwitch(std::string const & name) {
    return snapshotWith("received", R"({"switches": {")" + name +
                                        R"(": {"10": {"unicast": {"02:00:00:00:00:01":
                                        {"vtep": "10.0.0.1", "moves": 4294967295}}}}}})");
}

std::vector<std::string> const rowForms{"wide", "csv", "jsonl"};

} // namespace

TEST(Forms, MacReceivedHasTwoTables) {
    EXPECT_EQ(example({"mac", "received", "-o", "wide", "--source", "hsc", "--vni", "10"}),
              "Source  VNI  Mac Address     VTEP       Moves\n"
              "HSC     10   0000.5e00.5381  10.0.1.11      0\n"
              "HSC     10   0000.5e00.5382  10.0.1.12      1\n"
              "\n"
              "Source  VNI  Mac Address     VTEP       Type\n"
              "HSC     10   0000.0000.0000  10.0.1.11  sendToAll\n"
              "HSC     10   0000.0000.0000  10.0.1.12  sendToAll\n");
}

TEST(Forms, TheFloodTableIsChosenByItsName) {
    EXPECT_EQ(example({"mac", "advertised", "-o", "csv", "--table", "flood", "--vni", "4098"}),
              "vni,macAddr,vtepIp,vtepIpListType\r\n"
              "4098,00:00:00:00:00:00,10.0.0.1,sendToAll\r\n"
              "4098,00:00:00:00:00:00,10.0.0.2,sendToAll\r\n");
}

/// Sources that do not count have 0 in the tables, which is not how often something happened.
TEST(Forms, WhatASourceDoesNotCountIsUnknown) {
    auto const hosts = [](std::string const & moves) {
        return R"({"10":{"unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1","moves":)" + moves +
               R"(},"02:00:00:00:00:02":{"vtep":"10.0.0.1"}}}})";
    };
    auto const state =
        R"({"format":"vxlan-controller-state","version":1,"received":{"switches":{"leaf1":)" +
        hosts("3") + R"(,"leaf2":)" + hosts("0") + R"(}},"advertised":{"vnis":)" + hosts("4") +
        R"(},"uncounted":{"received":{"leaf1":["moves"]},"advertised":["moves"]}})";
    EXPECT_EQ(answer(state, {"mac", "received", "-o", "wide", "--table", "mac"}),
              "Source  VNI  Mac Address     VTEP      Moves\n"
              "leaf1   10   0200.0000.0001  10.0.0.1      3\n"
              "leaf1   10   0200.0000.0002  10.0.0.1      -\n"
              "leaf2   10   0200.0000.0001  10.0.0.1      0\n"
              "leaf2   10   0200.0000.0002  10.0.0.1      0\n");
    EXPECT_EQ(answer(state, {"mac", "advertised", "-o", "csv"}),
              "vni,macAddr,vtepIp,moveCount\r\n"
              "10,02:00:00:00:00:01,10.0.0.1,4\r\n"
              "10,02:00:00:00:00:02,10.0.0.1,\r\n");
    EXPECT_EQ(answer(state, {"mac", "received", "-o", "jsonl", "--source", "leaf1", "--sort",
                             "-moves", "--columns", "macAddr,moveCount"}),
              R"({"table":"mac","macAddr":"02:00:00:00:00:01","moveCount":3})"
              "\n"
              R"({"table":"mac","macAddr":"02:00:00:00:00:02","moveCount":null})"
              "\n");
}

TEST(Forms, ChangesAndPreferenceThatAreNotCountedAreUnknown) {
    auto const state = [](std::string const & entries) {
        return R"({"format":"vxlan-controller-state","version":1,"received":{"switches":{"leaf1":)" +
               entries + R"(}},"advertised":{"vnis":)" + entries +
               R"(},"uncounted":{"received":{"leaf1":["changes"]},"advertised":["preference"]}})";
    }(R"({"10":{"arp":{"192.0.2.1":{"mac":"02:00:00:00:00:01"}}}})");
    EXPECT_EQ(answer(state, {"arp", "received", "-o", "jsonl"}),
              R"({"table":"arp","switchId":"leaf1","vni":10,"ipAddress":"192.0.2.1",)"
              R"("macAddress":"02:00:00:00:00:01","changes":null,"preference":0})"
              "\n");
    EXPECT_EQ(answer(state, {"arp", "advertised", "-o", "csv", "--no-header"}),
              "10,192.0.2.1,02:00:00:00:00:01,0,\r\n");
}

TEST(Forms, AnEntryWithoutVtepsIsARowWithoutVtep) {
    auto const state =
        snapshotWith("advertised", R"({"vnis": {"10": {"flood": {"02:00:00:00:00:01": []}}}})");
    EXPECT_EQ(answer(state, {"mac", "advertised", "-o", "jsonl"}),
              R"({"table":"flood","vni":10,"macAddr":"02:00:00:00:00:01","vtepIp":null,)"
              R"("vtepIpListType":"sendToAll"})"
              "\n");
    EXPECT_EQ(answer(state, {"mac", "advertised", "-o", "wide", "--table", "flood"}),
              "VNI  Mac Address     VTEP  Type\n"
              "10   0200.0000.0001  -     sendToAll\n");
}

TEST(Forms, ArpAddressesAreWhole) {
    EXPECT_EQ(example({"arp", "received", "-o", "wide", "--switch", "leaf1", "--vni", "10"}),
              "Switch  VNI  IP Address                MAC Address     Changes  Preference\n"
              "leaf1   10   192.0.2.11                0000.5e00.5311        1         100\n"
              "leaf1   10   192.0.2.12                0000.5e00.5312        4         100\n"
              "leaf1   10   192.0.2.26                0000.5e00.531a        1         100\n"
              "leaf1   10   2001:db8:10::11           0000.5e00.5311        1         100\n"
              "leaf1   10   fe80::200:5eff:fe00:5311  0000.5e00.5311        1         100\n");
}

TEST(Forms, AVniIsANumberForProgramsEvenIfItIsDottedForPeople) {
    std::vector<std::string> const vni{"--vni", "70000",     "--dotted", "--top",
                                       "1",     "--columns", "vni"};
    for (std::string const command : {"mac", "arp"}) {
        auto const listed = [&](std::string const & form) {
            std::vector<std::string> arguments{command, "advertised", "-o", form};
            arguments.insert(arguments.end(), vni.begin(), vni.end());
            if (command == "mac") {
                arguments.insert(arguments.end(), {"--table", "mac"});
            }
            return example(arguments);
        };
        EXPECT_EQ(listed("wide"), "VNI\n1.17.112\n");
        EXPECT_EQ(listed("csv"), "vni\r\n70000\r\n");
        EXPECT_EQ(listed("jsonl"), "{\"table\":\"" + command + "\",\"vni\":70000}\n");
    }
}

TEST(Forms, ARouterMapNamesTheRouterInEachRow) {
    EXPECT_EQ(example({"router", "map", "-o", "csv", "--router", "internet"}),
              "router,vtepIp,switchId\r\n"
              "internet,10.0.0.3,00:00:5e:00:53:e3\r\n"
              "internet,10.0.0.4,00:00:5e:00:53:e4\r\n");
}

TEST(Forms, RouterDetailHasATableOfPortsAndOneOfUplinks) {
    EXPECT_EQ(
        example({"router", "detail", "-o", "wide", "--router", "internet"}),
        "Name      IP Address           VNI    MAC Address     VTEP\n"
        "internet  2001:db8:7000::1/64  70000  0000.5e00.53f3  10.0.0.3\n"
        "\n"
        "Name      IP Address          Switch             Vlan  Port        MAC Address     VTEP\n"
        "internet  100.64.0.1/31       00:00:5e:00:53:e3   900  Ethernet51  0000.5e00.53f3  "
        "10.0.0.3\n"
        "internet  2001:db8:64::1/127  00:00:5e:00:53:e3   900  Ethernet51  0000.5e00.53f3  "
        "10.0.0.3\n");
}

TEST(Forms, AnUplinkWithoutPortsIsARowWithoutPort) {
    auto const state = snapshotWith("routers", R"({"status": {"r": {"uplinks": {
        "10.0.0.1/24": {"mac": "02:00:00:00:00:01"}}}}})");
    EXPECT_EQ(answer(state, {"router", "detail", "-o", "jsonl"}),
              R"({"table":"uplinks","router":"r","ipAddress":"10.0.0.1/24","switchId":null,)"
              R"("vlan":null,"port":null,"mac":"02:00:00:00:00:01","vtepIp":null})"
              "\n");
}

TEST(Forms, ARouteHasARowForEachNexthop) {
    EXPECT_EQ(example({"router", "routes", "-o", "csv", "--prefix", "10.20.99.0/24"}),
              "router,prefix,nexthop\r\n"
              "internet,0.0.0.0/0,100.64.0.0\r\n"
              "internet,10.0.0.0/8,\r\n"
              "prod,0.0.0.0/0,10.255.1.2\r\n"
              "prod,10.20.0.0/16,10.255.1.3\r\n"
              "prod,10.20.0.0/16,10.255.1.4\r\n"
              "prod,10.20.0.0/16,10.255.1.5\r\n"
              "prod,10.20.99.0/24,\r\n");
}

TEST(Forms, CountsAreUnsigned) {
    auto const state = stateWithSwitch("leaf1");
    EXPECT_EQ(answer(state, {"mac", "received", "-o", "csv", "--columns", "moveCount"}),
              "moveCount\r\n4294967295\r\n");
    EXPECT_NE(answer(state, {"mac", "received"}).find("   -1\n"), std::string::npos);
}

TEST(Forms, AnEmptyStateHasOnlyHeaders) {
    auto const state = snapshotWith("received", "{}");
    EXPECT_EQ(answer(state, {"router", "map", "-o", "wide"}), "Name  VTEP  Switch\n");
    EXPECT_EQ(answer(state, {"router", "map", "-o", "wide", "--no-header"}), "");
    EXPECT_EQ(answer(state, {"router", "map", "-o", "csv"}), "router,vtepIp,switchId\r\n");
    EXPECT_EQ(answer(state, {"router", "map", "-o", "jsonl"}), "");
}

TEST(Forms, OnANarrowTerminalWideRowsContinueBetweenCells) {
    TemporaryFile const state(stateWithSwitch("leaf1"));
    auto arguments = formOf(state, "wide");
    arguments.insert(arguments.end(), {"--table", "mac"});
    EXPECT_EQ(vxshowOnTerminal(arguments, 40).out, "Source  VNI  Mac Address     VTEP\r\n"
                                                   "         Moves\r\n"
                                                   "leaf1   10   0200.0000.0001  10.0.0.1\r\n"
                                                   "    4294967295\r\n");
    EXPECT_EQ(vxshowOnTerminal(arguments, 50).out,
              "Source  VNI  Mac Address     VTEP           Moves\r\n"
              "leaf1   10   0200.0000.0001  10.0.0.1  4294967295\r\n");
}

TEST(Forms, CsvHasOrdinaryLineEndsOnATerminal) {
    TemporaryFile const state(stateWithSwitch("leaf1"));
    EXPECT_EQ(vxshowOnTerminal(formOf(state, "csv")).out,
              "source,vni,macAddr,vtepIp,moveCount\r\n"
              "leaf1,10,02:00:00:00:00:01,10.0.0.1,4294967295\r\n");
}

TEST(Forms, NoFormLetsANameControlATerminal) {
    TemporaryFile const state(stateWithSwitch(R"(a\u001b[2J\u202e)"));
    for (auto const & form : rowForms) {
        auto const out = vxshowOnTerminal(formOf(state, form)).out;
        EXPECT_EQ(out.find('\x1b'), std::string::npos) << out;
        EXPECT_EQ(out.find("\u202e"), std::string::npos) << out;
    }
}

TEST(Forms, ARowThatLooksLikeARuleDoesNotMoveTheColumns) {
    TemporaryFile const state(snapshotWith("routers", R"({"status": {
        "-": {"routes": {"10.0.0.0/8": []}},
        "S\u00fcd  x": {"routes": {"10.0.0.0/8": ["10.0.0.1"]}}}})"));
    auto const finished = vxshowOnTerminal(
        {"--state", state.path(), "router", "routes", "-o", "wide", "--columns", "router,nexthop"});
    EXPECT_EQ(finished.out, "Name    Nexthop\r\n"
                            "-       -\r\n"
                            "S\u00fcd  x  10.0.0.1\r\n");
}

TEST(Forms, AFullDiskIsOneLineAndStatus1) {
    TemporaryFile const state(smallSnapshot());
    for (auto const & form : rowForms) {
        int const full = open("/dev/full", O_WRONLY | O_CLOEXEC);
        Finished const finished = runVxshow(formOf(state, form), {.outFd = full});
        close(full);
        EXPECT_EQ(finished.status, 1);
        EXPECT_NE(finished.err.find("vxshow: mac received: "), std::string::npos) << finished.err;
        EXPECT_NE(finished.err.find("No space left on device"), std::string::npos) << finished.err;
        EXPECT_EQ(finished.err.find('\n'), finished.err.size() - 1) << finished.err;
    }
}

TEST(Forms, AClosedPipeEndsTheProgramSilently) {
    TemporaryFile const state(largeSnapshot(50'000));
    for (auto const & form : rowForms) {
        Process process(formOf(state, form));
        process.readSome(100);
        process.closeReader();
        Finished const finished = process.finish();
        EXPECT_EQ(finished.signal, SIGPIPE) << form;
        EXPECT_EQ(finished.err, "");
    }
}

TEST(Forms, AnInterruptWhilePrintingEndsTheListingAtALineEnd) {
    TemporaryFile const state(largeSnapshot(200'000));
    for (auto const & form : rowForms) {
        Process process(formOf(state, form));
        std::string out = process.readSome(1000);
        process.signal(SIGINT);
        Finished const finished = process.finish();
        out += finished.out;
        EXPECT_EQ(finished.status, 130) << form;
        EXPECT_EQ(finished.err, "");
        ASSERT_GE(out.size(), 22U);
        EXPECT_EQ(out.substr(out.size() - 22), "\nexiting on interrupt\n") << form;
        EXPECT_LT(std::count(out.begin(), out.end(), '\n'), 200'000) << form;
    }
}

TEST(Forms, WatchShowsEachForm) {
    TemporaryFile const state(smallSnapshot());
    for (auto const & form : rowForms) {
        auto arguments = formOf(state, form);
        auto const once = runVxshow(arguments).out;
        arguments.insert(arguments.end(), {"--watch", "1"});
        Process process(arguments);
        std::string out;
        // JSON lines have a line before each frame.
        std::regex const heads(R"((^|\n)\{"frame":[^\n]*\n)");
        auto const rows = [&] { return std::regex_replace(out, heads, "$1"); };
        while (rows().size() < 2 * once.size()) {
            auto const some = process.readSome(once.size());
            ASSERT_FALSE(some.empty());
            out += some;
        }
        process.signal(SIGINT);
        EXPECT_EQ(process.finish().status, 130);
        EXPECT_EQ(rows().substr(0, 2 * once.size()), once + once);
        EXPECT_EQ(out != rows(), form == "jsonl");
    }
}
