#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

std::string macFailure(std::string const & entries) {
    auto zebra = zebraWithMacs(entries);
    return failureOf(zebra);
}

std::string failureWith(std::string const & command, std::string const & answer) {
    auto zebra = zebraWithMacs("");
    zebra[command] = answer;
    return failureOf(zebra);
}

std::string leftOut(std::string const & entries) {
    auto zebra = zebraWithMacs(entries);
    auto const answer = zebra.ask();
    EXPECT_TRUE(answer.facts.local.at("leaf1").macs.empty());
    EXPECT_TRUE(answer.facts.remote.macs.empty());
    return answer.findings.warning().value_or("nothing");
}

} // namespace

TEST(FrrShape, AnUnknownCommandIsABrokenAnswer) {
    EXPECT_EQ(failureWith("show evpn mac vni all json", "% Unknown command: show evpn mac\n"),
              "broken answer: show evpn mac vni all json: vtysh says % Unknown command: show evpn "
              "mac");
}

TEST(FrrShape, GarbageIsNamedWithItsCommandAndPlace) {
    EXPECT_EQ(
        failureWith("show evpn vni detail json", "gar\x1b[2Jbage"),
        "broken answer: show evpn vni detail json: 1:1: found gar\\x1b, expected a list of VNIs");
    EXPECT_EQ(failureWith("show vrf vni json", "7"),
              "broken answer: show vrf vni json: 1:1: found 7, expected an object");
}

TEST(FrrShape, ARepeatedDocumentIsRefused) {
    EXPECT_EQ(
        failureWith("show vrf vni json", "{\"vrfs\":[]}\n{\"vrfs\":[]}\n"),
        "broken answer: show vrf vni json: 2:1: found an object, expected the end of the file");
}

TEST(FrrShape, ATypeThatIsNotTextIsRefused) {
    EXPECT_EQ(macFailure(R"("02:00:00:00:00:01":{"type":7})"),
              "FRR of unknown version: show evpn mac vni all json: 1:56: "
              "\"10\".macs.\"02:00:00:00:00:01\".type: found 7, expected \"local\", \"remote\" or "
              "\"auto\": this version's answer is not understood");
}

TEST(FrrShape, AnUnknownTypeIsRefused) {
    EXPECT_NE(macFailure(R"("02:00:00:00:00:01":{"type":"lost"})").find("found \"lost\""),
              std::string::npos);
}

TEST(FrrShape, AMissingMemberIsRefused) {
    EXPECT_NE(macFailure(R"("02:00:00:00:00:01":{"type":"local"})").find("\"localSequence\" in it"),
              std::string::npos);
    EXPECT_NE(macFailure(R"("02:00:00:00:00:01":{"type":"remote","remoteSequence":0})")
                  .find("\"remoteVtep\" in it"),
              std::string::npos);
}

TEST(FrrShape, ARepeatedMemberIsRefused) {
    EXPECT_NE(macFailure(R"("02:00:00:00:00:01":{"type":"local","typ\u0065":"remote"})")
                  .find("expected it once"),
              std::string::npos);
}

TEST(FrrShape, AnInvalidSequenceIsRefused) {
    for (auto const * const wrong : {"-1", "1.5", "\"1\"", "4294967296", "true", "[]"}) {
        auto const failure = macFailure(R"("02:00:00:00:00:01":{"type":"local","localSequence":)" +
                                        std::string(wrong) + "}");
        EXPECT_NE(failure.find("expected a whole number from 0 to 4294967295"), std::string::npos)
            << failure;
    }
}

TEST(FrrShape, AnInvalidAddressIsLeftOut) {
    EXPECT_EQ(leftOut(localMac("02:00:00:00:00")),
              "1 entry left out: VNI 10: MAC \"02:00:00:00:00\", expected an Ethernet address such "
              "as 00:1c:73:0a:0b:0c");
    EXPECT_EQ(
        leftOut(remoteMac("02:00:00:00:00:01", "nowhere")),
        "1 entry left out: VNI 10: 02:00:00:00:00:01 at \"nowhere\", expected an IPv4 address "
        "such as 10.0.0.1");
}

TEST(FrrShape, NamesWithEscapesAreShownPrintable) {
    EXPECT_EQ(
        leftOut(localMac(R"(\u001b[2J\n)")),
        "1 entry left out: VNI 10: MAC \"\\x1b[2J\\x0a\", expected an Ethernet address such as "
        "00:1c:73:0a:0b:0c");
}

TEST(FrrShape, AnInvalidVniIsLeftOut) {
    auto zebra = zebraWithMacs("");
    zebra["show evpn mac vni all json"] =
        R"({"16777216":{"macs":{)" + localMac("02:00:00:00:00:01") + "}}}";
    EXPECT_EQ(zebra.ask().findings.warning(),
              "1 entry left out: VNI \"16777216\", expected one from 0 to 16777215");
}

TEST(FrrShape, DeepNestingIsHarmless) {
    std::string const deep(100000, '[');
    EXPECT_TRUE(
        macFailure(R"("02:00:00:00:00:01":{"x":)" + deep + "}").starts_with("broken answer: "));
    EXPECT_TRUE(failureWith("show evpn vni detail json", deep).starts_with("broken answer: "));
    EXPECT_EQ(macFailure(R"("02:00:00:00:00:01":{"x":)" + deep + std::string(100000, ']') +
                         R"(,"type":"local","localSequence":0})"),
              "accepted");
}

TEST(FrrShape, TheLineAfterADocumentDoesNotCompleteIt) {
    auto zebra = zebraWithMacs("");
    zebra["show evpn mac vni all json"] = R"({"10":{"macs":{}})";
    auto const run = [&](std::vector<std::string> const & commands) {
        auto printed = zebra.printed(commands);
        for (std::size_t at = 0; (at = printed.find("\nleaf1#", at)) != std::string::npos;) {
            printed.replace(at + 1, 5, "}");
        }
        return system::FileBytes::copyOf(printed);
    };
    try {
        converse(run, {"leaf1"}, {});
        ADD_FAILURE() << "accepted";
    } catch (Failure const & failure) {
        EXPECT_TRUE(std::string_view(failure.what())
                        .starts_with("broken answer: show evpn mac vni all json: "))
            << failure.what();
    }
}

TEST(FrrShape, ADocumentThatIsCutOffAnywhereIsRefused) {
    FakeZebra whole("vtep1");
    for (auto const * const command :
         {"show evpn vni detail json", "show evpn mac vni all json", "show evpn es detail json",
          "show evpn arp-cache vni all json", "show vrf vni json",
          "show interface vrf tenant1 json", "show ip route vrf tenant2 json",
          "show evpn mac vni 4098 mac 02:40:98:00:e5:01 json"}) {
        auto const document = whole[command];
        auto const end = document.find_last_of("]}");
        for (std::size_t length = 1; length <= end; length += 1 + end / 200) {
            FakeZebra zebra = whole;
            zebra[command] = document.substr(0, length);
            EXPECT_TRUE(failureOf(zebra).starts_with("broken answer: " + std::string(command)))
                << command << " cut off after " << length;
        }
    }
}

} // namespace vxshow::test
