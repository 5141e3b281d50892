#include "vxshow/sources/fabric/SourceTable.h"

#include "tests/unit/vxshow/sources/fabric/Fabrics.h"
#include "vxshow/sources/frr/VtyshAccess.h"
#include "vxshow/sources/ovsdb/DatabaseAccess.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;

namespace {

auto const tableMac1 = Nolt::EthAddr::fromString("02:00:00:00:00:01");

/// A source with that name, as written in the file.
std::string named(std::string_view name) {
    return "[[source]]\nkind = \"frr\"\nname = " + std::string(name) + "\n";
}

std::chrono::milliseconds timeLimitOf(std::string const & value) {
    return sourceOf(frr("time_limit = " + value)).timeLimit;
}

} // namespace

TEST(SourceTable, AnFrrSourceNeedsOnlyItsName) {
    auto const source = sourceOf(frr(""));
    EXPECT_EQ(source.name, "leaf1");
    EXPECT_EQ(accessOf<sources::frr::VtyshAccess>(source).command(), sources::frr::VtyshCommand());
}

TEST(SourceTable, ADatabaseNeedsOnlyItsNameAndItsRemotes) {
    auto const source = sourceOf(database(""));
    EXPECT_EQ(source.name, "leaf1");
    auto const & access = accessOf<sources::ovsdb::DatabaseAccess>(source);
    EXPECT_EQ(access.address(), sources::ovsdb::DatabaseAddress{{"unix:/run/ovs/db.sock"}});
    EXPECT_TRUE(access.systemIds().empty());
}

TEST(SourceTable, TheKindIsOneOfTwo) {
    constexpr auto expected = R"(, expected "hardware_vtep" or "frr")";
    EXPECT_EQ(refusalOf("[[source]]\nkind = \"FRR\""),
              std::string(R"(2:8: source[0].kind: found "FRR")") + expected);
    EXPECT_EQ(refusalOf("[[source]]\nkind = 7"),
              std::string("2:8: source[0].kind: found 7") + expected);
    EXPECT_EQ(refusalOf("[[source]]\nname = \"x\""),
              R"(1:1: source[0]: found a table, expected "kind" in it)");
}

TEST(SourceTable, TheNameIsRequired) {
    EXPECT_EQ(refusalOf("[[source]]\nkind = \"frr\""),
              R"(1:1: source[0]: found a table, expected "name" in it)");
}

TEST(SourceTable, TheNameIsAnyTextOf1To256BytesWithoutControlCharacters) {
    EXPECT_EQ(sourceOf(named(R"("Blatt 1 / S\u00fcd \u00a0\U0001F343")")).name,
              "Blatt 1 / S\xC3\xBC"
              "d \xC2\xA0\xF0\x9F\x8D\x83");
    EXPECT_EQ(sourceOf(named('"' + std::string(256, 'x') + '"')).name, std::string(256, 'x'));
    constexpr auto expected = ", expected a name of 1 to 256 bytes without control characters";
    EXPECT_EQ(refusalOf(named("\"\"")), std::string(R"(3:8: source[0].name: found "")") + expected);
    EXPECT_EQ(refusalOf(named("1")), std::string("3:8: source[0].name: found 1") + expected);
    EXPECT_EQ(refusalOf(named('"' + std::string(257, 'x') + '"')),
              "3:8: source[0].name: found \"" + std::string(60, 'x') + "...\"" + expected);
}

TEST(SourceTable, ANameWithAControlCharacterIsShownWithoutIt) {
    constexpr auto expected = ", expected a name of 1 to 256 bytes without control characters";
    for (auto const & [written, shown] :
         {std::pair(R"(\u0000)", R"(\x00)"), std::pair(R"(\n)", R"(\x0a)"),
          std::pair(R"(\u001b)", R"(\x1b)"), std::pair(R"(\u007f)", R"(\x7f)"),
          std::pair(R"(\u0080)", R"(\xc2\x80)"), std::pair(R"(\u009f)", R"(\xc2\x9f)")}) {
        EXPECT_EQ(refusalOf(named("\"a" + std::string(written) + "b\"")),
                  "3:8: source[0].name: found \"a" + std::string(shown) + "b\"" + expected);
    }
}

TEST(SourceTable, TheRoleIsOneOfFourAndASwitchByDefault) {
    EXPECT_EQ(sourceOf(frr("")).role, Role::switches);
    EXPECT_EQ(sourceOf(frr("role = \"switch\"")).role, Role::switches);
    EXPECT_EQ(sourceOf(frr("role = \"hsc\"")).role, Role::hsc);
    EXPECT_EQ(sourceOf(frr("role = \"qvx\"")).role, Role::qvx);
    EXPECT_EQ(sourceOf(frr("role = \"evpn\"")).role, Role::evpn);
    EXPECT_EQ(refusalOf(frr("role = \"EVPN\"")),
              R"(4:8: source[0].role: found "EVPN", expected "switch", "hsc", "qvx" or "evpn")");
    EXPECT_EQ(refusalOf(frr("role = [\"hsc\"]")),
              R"(4:8: source[0].role: found an array, expected "switch", "hsc", "qvx" or "evpn")");
}

TEST(SourceTable, TheTimeLimitIsInSecondsAndKeptInMilliseconds) {
    using std::chrono::milliseconds;
    EXPECT_EQ(sourceOf(frr("")).timeLimit, milliseconds(5000));
    EXPECT_EQ(timeLimitOf("3"), milliseconds(3000));
    EXPECT_EQ(timeLimitOf("3600"), milliseconds(3600000));
    EXPECT_EQ(timeLimitOf("0.07"), milliseconds(70));
    EXPECT_EQ(timeLimitOf("1.5"), milliseconds(1500));
    EXPECT_EQ(timeLimitOf("1e2"), milliseconds(100000));
    EXPECT_EQ(timeLimitOf("1e-300"), milliseconds(1));
}

TEST(SourceTable, TheTimeLimitIsMoreThan0AndAtMostAnHour) {
    for (auto const & [written, shown] :
         {std::pair("0", "0"), std::pair("0.0", "0"), std::pair("-1", "-1"),
          std::pair("3601", "3601"), std::pair("3600.5", "3600.5"), std::pair("nan", "nan"),
          std::pair("inf", "inf"), std::pair("-inf", "-inf"),
          std::pair("9223372036854775807", "9223372036854775807"), std::pair("\"5\"", "\"5\""),
          std::pair("true", "true"), std::pair("07:32:00", "a date or time")}) {
        EXPECT_EQ(refusalOf(frr("time_limit = " + std::string(written))),
                  "4:14: source[0].time_limit: found " + std::string(shown) +
                      ", expected seconds: a number greater than 0 and at most 3600");
    }
}

TEST(SourceTable, TheMostFactsAreAPositiveWholeNumber) {
    EXPECT_EQ(sourceOf(frr("")).maxFacts, 10'000'000U);
    EXPECT_EQ(sourceOf(database("")).maxFacts, 10'000'000U);
    EXPECT_EQ(sourceOf(frr("max_facts = 1")).maxFacts, 1U);
    EXPECT_EQ(sourceOf(database("max_facts = 4294967295")).maxFacts, 4294967295U);
    for (auto const & [written, shown] :
         {std::pair("0", "0"), std::pair("-1", "-1"), std::pair("4294967296", "4294967296"),
          std::pair("1e7", "1e+07"), std::pair("2.5", "2.5"), std::pair("\"5\"", "\"5\""),
          std::pair("true", "true")}) {
        EXPECT_EQ(refusalOf(frr("max_facts = " + std::string(written))),
                  "4:13: source[0].max_facts: found " + std::string(shown) +
                      ", expected a whole number from 1 to 4294967295");
    }
}

TEST(SourceTable, TheSystemIdentifierIsAMacAddressInAnyOfItsForms) {
    EXPECT_EQ(sourceOf(frr("")).systemId, std::nullopt);
    for (auto const * const text : {"02:00:00:00:00:01", "02-00-00-00-00-01", "0200.0000.0001"}) {
        EXPECT_EQ(sourceOf(frr("system_id = \"" + std::string(text) + '"')).systemId, tableMac1);
        EXPECT_EQ(sourceOf(database("system_id = \"" + std::string(text) + '"')).systemId,
                  tableMac1);
    }
    constexpr auto expected = ", expected an Ethernet address such as 00:1c:73:0a:0b:0c, "
                              "00-1c-73-0a-0b-0c or 001c.730a.0b0c";
    EXPECT_EQ(refusalOf(frr("system_id = \"02:00\"")),
              std::string(R"(4:13: source[0].system_id: found "02:00")") + expected);
    EXPECT_EQ(refusalOf(frr("system_id = 20000000001")),
              std::string("4:13: source[0].system_id: found 20000000001") + expected);
}

TEST(SourceTable, AnUnknownKeyIsRefusedWithTheKeysOfTheKind) {
    EXPECT_EQ(refusalOf(frr("  \"\xC3\xA4\" = 1\nremote_shel = true")),
              "4:3: source[0]: found \"\\xc3\\xa4\", expected \"kind\", \"name\", \"role\", "
              "\"time_limit\", \"max_facts\", \"system_id\", \"command\", \"path_space\", "
              "\"remote_shell\" or \"expects_evpn\"");
    EXPECT_EQ(refusalOf(database("Role = \"hsc\"")),
              "5:1: source[0]: found \"Role\", expected \"kind\", \"name\", \"role\", "
              "\"time_limit\", \"max_facts\", \"system_id\", \"remotes\", \"private_key\", "
              "\"certificate\", "
              "\"ca_certificate\" or \"system_ids\"");
}

TEST(SourceTable, TheFirstUnknownKeyIsReported) {
    EXPECT_EQ(refusalOf(frr("zeal = 1\nage = 2")).substr(0, 34),
              "4:1: source[0]: found \"zeal\", expe");
}

TEST(SourceTable, AKeyOfAnotherKindIsRefusedAsSuch) {
    for (auto const * const key :
         {"remotes", "private_key", "certificate", "ca_certificate", "system_ids"}) {
        EXPECT_EQ(refusalOf(frr(std::string(key) + " = 1")),
                  "4:1: source[0]: found \"" + std::string(key) +
                      "\", which is only for kind \"hardware_vtep\", expected \"kind\", \"name\", "
                      "\"role\", \"time_limit\", \"max_facts\", \"system_id\", \"command\", "
                      "\"path_space\", \"remote_shell\" or \"expects_evpn\"");
    }
    for (auto const * const key : {"command", "path_space", "remote_shell", "expects_evpn"}) {
        EXPECT_EQ(refusalOf(database(std::string(key) + " = 1")),
                  "5:1: source[0]: found \"" + std::string(key) +
                      "\", which is only for kind \"frr\", expected \"kind\", \"name\", \"role\", "
                      "\"time_limit\", \"max_facts\", \"system_id\", \"remotes\", \"private_key\", "
                      "\"certificate\", \"ca_certificate\" or \"system_ids\"");
    }
}

} // namespace vxshow::test
