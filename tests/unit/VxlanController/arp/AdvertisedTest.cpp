#include "Vex/Errors.h"
#include "Vex/Reinstantiation.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/arp/ArpState.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

/// Two VNIs with two bindings each, ordered differently by each key.
ArpState twoVnis() {
    ArpState state;
    state
        .advertised("10", {{"10.0.0.2", "00:1c:73:0a:0b:0c", 3, 100},
                           {"10.0.0.10", "02:00:00:00:00:01", 0, 1}})
        .advertised("9", {{"2001:db8::1", "00:1c:73:0a:0b:0c", 7, 255},
                          {"10.0.0.2", "02:00:00:00:00:02", 1, 0}});
    return state;
}

/// Renders the listing in both formats, each of which must raise an Error before it prints
/// anything, and returns the text of the error.
template <class Error>
std::string raised(ArpState const & state, ArpFilters const & filters = {}) {
    std::string text;
    for (Vex::U32 format : {textFormat, jsonFormat}) {
        OutputFile const file;
        try {
            advertisedCommand(state, filters)->render(static_cast<Vex::U32>(file.fd()), format, 2);
            ADD_FAILURE() << "nothing was raised";
        } catch (Error const & error) {
            text = error.what();
        }
        EXPECT_EQ(file.content(), "");
    }
    return text;
}

ArpState named(char const * name) {
    ArpState state;
    state.advertised(name, {{"10.0.0.1", "02:00:00:00:00:01"}});
    return state;
}

/// The VNI, as text, under which an entry of that name is listed.
std::string vniNamed(char const * name) {
    std::string const json = advertisedJson(named(name));
    std::string const before = "{\"vnis\":{\"";
    EXPECT_EQ(json.substr(0, before.size()), before);
    return json.substr(before.size(), json.find('"', before.size()) - before.size());
}

constexpr char const * rangeError = "Vni::value < Vni::min or > Vni::max not allowed";

} // namespace

TEST(ArpAdvertised, ShowsEveryBindingAsText) {
    EXPECT_EQ(advertisedText(twoVnis()),
              "                       Advertised ARP Table\n"
              "-------------------------------------------------------------------------\n"
              "VNI      IP Address      MAC Address        Changes\n"
              "-------- --------------- ------------------ --------\n"
              "10       10.0.0.2        001c.730a.0b0c     3        \n"
              "10       10.0.0.10       0200.0000.0001     0        \n"
              "9        10.0.0.2        0200.0000.0002     1        \n"
              "9        2001:db8::1     001c.730a.0b0c     7        \n"
              "\n"
              "Total IP addresses for this criterion: 4\n");
}

TEST(ArpAdvertised, ShowsEveryBindingAsJson) {
    EXPECT_EQ(rendered(advertisedCommand(twoVnis()), 3),
              R"({
  "vnis": {
    "10": {
      "addresses": {
        "10.0.0.2": {
          "macAddress": "00:1c:73:0a:0b:0c",
          "changes": 3,
          "preference": 100
        },
        "10.0.0.10": {
          "macAddress": "02:00:00:00:00:01",
          "changes": 0,
          "preference": 1
        }
      }
    },
    "9": {
      "addresses": {
        "10.0.0.2": {
          "macAddress": "02:00:00:00:00:02",
          "changes": 1,
          "preference": 0
        },
        "2001:db8::1": {
          "macAddress": "00:1c:73:0a:0b:0c",
          "changes": 7,
          "preference": 255
        }
      }
    }
  }
}
)");
}

TEST(ArpAdvertised, AnEmptyDirectoryIsAnEmptyTable) {
    EXPECT_EQ(advertisedText(ArpState()), advertisedTable("", 0));
    EXPECT_EQ(advertisedJson(ArpState()), "{\"vnis\":{}}\n");
}

TEST(ArpAdvertised, AnAbsentDirectoryIsAnEmptyTable) {
    ArpState state;
    state.vnis = nullptr;
    EXPECT_EQ(advertisedText(state), advertisedTable("", 0));
    EXPECT_EQ(advertisedJson(state), "{\"vnis\":{}}\n");
}

TEST(ArpAdvertised, AMacFilterThatMatchesNothingKeepsEveryVniInJsonAndNoRowInText) {
    ArpFilters const filters{.mac = "02:00:00:00:00:99"};
    EXPECT_EQ(advertisedText(twoVnis(), filters), advertisedTable("", 0));
    EXPECT_EQ(advertisedJson(twoVnis(), filters),
              R"({"vnis":{"10":{"addresses":{}},"9":{"addresses":{}}}})"
              "\n");
}

TEST(ArpAdvertised, AMacFilterSelectsThatMacOnly) {
    EXPECT_EQ(advertisedText(twoVnis(), {.mac = "00:1c:73:0a:0b:0c"}),
              advertisedTable("10       10.0.0.2        001c.730a.0b0c     3        \n"
                              "9        2001:db8::1     001c.730a.0b0c     7        \n",
                              2));
}

TEST(ArpAdvertised, AnIpFilterSelectsThatAddressOnly) {
    EXPECT_EQ(advertisedText(twoVnis(), {.ip = "10.0.0.2"}),
              advertisedTable("10       10.0.0.2        001c.730a.0b0c     3        \n"
                              "9        10.0.0.2        0200.0000.0002     1        \n",
                              2));
    EXPECT_EQ(advertisedText(twoVnis(), {.ip = "2001:DB8:0::1"}),
              advertisedTable("9        2001:db8::1     001c.730a.0b0c     7        \n", 1));
}

TEST(ArpAdvertised, AnIpFilterOfTheOtherVersionSelectsNothing) {
    EXPECT_EQ(advertisedText(twoVnis(), {.ip = "::ffff:10.0.0.2"}), advertisedTable("", 0));
    EXPECT_EQ(advertisedText(twoVnis(), {.ip = "::a00:2"}), advertisedTable("", 0));
}

TEST(ArpAdvertised, MacAndIpFiltersCombine) {
    EXPECT_EQ(advertisedText(twoVnis(), {.mac = "02:00:00:00:00:02", .ip = "10.0.0.2"}),
              advertisedTable("9        10.0.0.2        0200.0000.0002     1        \n", 1));
}

TEST(ArpAdvertised, AVniFilterSelectsThatVniOnly) {
    EXPECT_EQ(advertisedJson(twoVnis(), {.vni = Vxlan::Vni(9), .ip = "10.0.0.9"}),
              "{\"vnis\":{\"9\":{\"addresses\":{}}}}\n");
    EXPECT_EQ(advertisedJson(twoVnis(), {.vni = Vxlan::Vni(11)}), "{\"vnis\":{}}\n");
}

TEST(ArpAdvertised, AVniFilterOfTheNoneValueSelectsEveryVni) {
    EXPECT_EQ(advertisedText(twoVnis(), {.vni = Vxlan::VniOrNone(16777216)}),
              advertisedText(twoVnis()));
}

TEST(ArpAdvertised, AVniFilterAboveTheNoneValueSelectsNothing) {
    EXPECT_EQ(advertisedJson(twoVnis(), {.vni = Vxlan::VniOrNone(16777217)}), "{\"vnis\":{}}\n");
}

TEST(ArpAdvertised, Vni100IsListedBeforeVni20) {
    ArpState state;
    state.advertised("20", {}).advertised("100", {}).advertised("3", {});
    EXPECT_EQ(advertisedJson(state), R"({"vnis":{"100":{"addresses":{}},"20":{"addresses":{}},)"
                                     R"("3":{"addresses":{}}}})"
                                     "\n");
}

TEST(ArpAdvertised, DottedVnisAreAlsoOrderedByTheirText) {
    ArpState state;
    state.advertised("20", {{"10.0.0.1", "02:00:00:00:00:01"}})
        .advertised("100", {{"10.0.0.1", "02:00:00:00:00:01"}})
        .advertised("4098", {{"10.0.0.1", "02:00:00:00:00:01"}})
        .advertised("16777215", {{"10.0.0.1", "02:00:00:00:00:01"}});
    ArpFilters const dotted{.dotted = true};
    EXPECT_EQ(advertisedText(state, dotted),
              advertisedTable("0.0.100  10.0.0.1        0200.0000.0001     0        \n"
                              "0.0.20   10.0.0.1        0200.0000.0001     0        \n"
                              "0.16.2   10.0.0.1        0200.0000.0001     0        \n"
                              "255.255.255 10.0.0.1        0200.0000.0001     0        \n",
                              4));
    EXPECT_EQ(advertisedJson(state, {.vni = Vxlan::Vni(4098), .ip = "1.1.1.1", .dotted = true}),
              "{\"vnis\":{\"0.16.2\":{\"addresses\":{}}}}\n");
}

TEST(ArpAdvertised, EveryRevisionPrintsTheSame) {
    auto const command = advertisedCommand(twoVnis());
    for (Vex::U32 format : {textFormat, jsonFormat}) {
        std::string const whole = rendered(command, format, 2);
        for (Vex::U32 revision : {0U, 1U, 3U, 4294967295U}) {
            EXPECT_EQ(rendered(command, format, revision), whole) << revision;
        }
    }
}

TEST(ArpAdvertised, ATableWithThousandsOfEntriesIsOrderedByAddress) {
    ArpState state;
    auto const status = Vex::makePtr<VxlanController::VniFdbStatusV2>();
    addMany(*status, 20'000);
    state.vnis->entityIs("10", status);
    std::string const text = advertisedText(state);
    std::string order;
    std::string expected;
    std::size_t at = advertisedTable("", 0).find("\n\nTotal") + 1;
    for (Vex::U32 i = 0; i < 20'000; ++i, at = text.find('\n', at) + 1) {
        order += text.substr(at + 9, text.find(' ', at + 9) - at - 9) + " ";
        expected += Nolt::IpAddr(0x0A000000 + i).stringValue() + " ";
    }
    EXPECT_EQ(order, expected);
    EXPECT_EQ(text.substr(at), "\nTotal IP addresses for this criterion: 20000\n");
}

TEST(ArpAdvertised, AnEntryOfAnotherTypeIsSkippedWhateverItsName) {
    ArpState state = twoVnis();
    state.vnis->entityIs("abc", Vex::makePtr<VxlanController::VniStatusV2>(Vxlan::Vni(5)));
    state.vnis->entityIs("11", Vex::makePtr<VxlanController::VniStatusDirV2>());
    state.vnis->dirIs("99999999999");
    EXPECT_EQ(advertisedText(state), advertisedText(twoVnis()));
}

TEST(ArpAdvertised, ANameCanHaveLeadingBlanksASignAndTrailingText) {
    EXPECT_EQ(vniNamed(" 7"), "7");
    EXPECT_EQ(vniNamed("\t\n 7"), "7");
    EXPECT_EQ(vniNamed("+7"), "7");
    EXPECT_EQ(vniNamed("7x"), "7");
    EXPECT_EQ(vniNamed("0x10"), "0");
    EXPECT_EQ(vniNamed("007"), "7");
    EXPECT_EQ(vniNamed("-0"), "0");
    EXPECT_EQ(vniNamed("16777215"), "16777215");
}

TEST(ArpAdvertised, ANameThatIsNotANumberRaisesInvalidArgument) {
    EXPECT_EQ(raised<std::invalid_argument>(named("abc")), "stoi");
    EXPECT_EQ(raised<std::invalid_argument>(named("")), "stoi");
    EXPECT_EQ(raised<std::invalid_argument>(named(" ")), "stoi");
    EXPECT_EQ(raised<std::invalid_argument>(named("+ 7")), "stoi");
}

TEST(ArpAdvertised, ANameOfMoreThan32BitsRaisesOutOfRange) {
    EXPECT_EQ(raised<std::out_of_range>(named("99999999999")), "stoi");
    EXPECT_EQ(raised<std::out_of_range>(named("2147483648")), "stoi");
    EXPECT_EQ(raised<std::out_of_range>(named("-2147483649")), "stoi");
}

TEST(ArpAdvertised, ANumberThatIsNotAVniRaisesARangeError) {
    for (char const * name : {"-1", "-2147483648", "16777216", "2147483647", "+16777216"}) {
        EXPECT_EQ(raised<Vex::RangeError>(named(name)), rangeError) << name;
    }
}

TEST(ArpAdvertised, ABadNameRaisesWhateverTheVniFilter) {
    ArpFilters const filters{.vni = Vxlan::Vni(10)};
    EXPECT_EQ(raised<std::invalid_argument>(named("abc"), filters), "stoi");
    EXPECT_EQ(raised<Vex::RangeError>(named("-1"), filters), rangeError);
}

TEST(ArpAdvertised, TwoEntriesOfOneVniThatAgreeShareATable) {
    ArpState state;
    state
        .advertised("10",
                    {{"10.0.0.1", "02:00:00:00:00:01", 1, 2}, {"10.0.0.3", "02:00:00:00:00:03"}})
        .advertised("010",
                    {{"10.0.0.1", "02:00:00:00:00:01", 1, 2}, {"10.0.0.2", "02:00:00:00:00:02"}});
    EXPECT_EQ(advertisedText(state),
              advertisedTable("10       10.0.0.1        0200.0000.0001     1        \n"
                              "10       10.0.0.2        0200.0000.0002     0        \n"
                              "10       10.0.0.3        0200.0000.0003     0        \n",
                              3));
}

TEST(ArpAdvertised, TwoEntriesOfOneVniThatDisagreeRaiseAndPrintNothing) {
    std::string const subject = "VxlanController::Cli::VxlanArpEntry 10.0.0.1: ";

    struct {
        Binding other;
        std::string attribute;
    } const cases[] = {
        {{"10.0.0.1", "02:00:00:00:00:09", 9, 9}, "macAddress cannot change from 02:00:00:00:00:0"},
        {{"10.0.0.1", "02:00:00:00:00:01", 9, 9}, "preference cannot change from "},
        {{"10.0.0.1", "02:00:00:00:00:01", 9, 2}, "changes cannot change from "},
    };

    for (auto const & [other, attribute] : cases) {
        ArpState state;
        state.advertised("10", {{"10.0.0.1", "02:00:00:00:00:01", 1, 2}})
            .advertised("010", {other});
        std::string const expected = subject + attribute;
        EXPECT_EQ(raised<Vex::ReinstantiationError>(state).substr(0, expected.size()), expected);
    }
}

TEST(ArpAdvertised, ADisagreementThatTheFiltersExcludeRaisesNothing) {
    ArpState state;
    state.advertised("10", {{"10.0.0.1", "02:00:00:00:00:01"}})
        .advertised("010", {{"10.0.0.1", "02:00:00:00:00:09"}});
    EXPECT_EQ(advertisedText(state, {.mac = "02:00:00:00:00:09"}),
              advertisedTable("10       10.0.0.1        0200.0000.0009     0        \n", 1));
    EXPECT_EQ(advertisedText(state, {.vni = Vxlan::Vni(9)}), advertisedTable("", 0));
}
