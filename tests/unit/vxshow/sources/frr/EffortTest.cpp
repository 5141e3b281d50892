#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

using Kind = Question::Kind;
using namespace std::chrono_literals;

Deadline passed() {
    return {Deadline::Clock::now() - 1s, 5s};
}

constexpr char const * noAnswer = "time limit: no answer within 5 s";

struct CannedAnswer {
    Question question;
    std::string text;
};

Answer read(std::vector<CannedAnswer> const & answers,
            Deadline const & deadline = Deadline::in(1h)) {
    std::vector<Document> documents;
    for (auto const & [question, text] : answers) {
        documents.push_back({question, system::FileBytes::copyOf(text)});
    }
    return readDocuments(documents, {"leaf1"}, {}, deadline);
}

std::string timeOver(std::vector<CannedAnswer> const & answers) {
    try {
        read(answers, passed());
    } catch (TimedOut const & failure) {
        return failure.what();
    }
    return "accepted";
}

/// That many texts, each made from its number, separated by commas.
template <class Make>
std::string listed(unsigned count, Make && make) {
    std::string text;
    for (unsigned number = 0; number < count; ++number) {
        text.append(number == 0 ? "" : ",").append(make(number));
    }
    return text;
}

std::string macOf(unsigned number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "02:00:00:00:%02x:%02x", number >> 8 & 0xFF,
                  number & 0xFF);
    return text.data();
}

std::string macsOf10(std::string const & entries) {
    return R"({"10":{"macs":{)" + entries + "}}}";
}

std::string macsOf10(unsigned count) {
    return macsOf10(listed(count, [](unsigned number) { return localMac(macOf(number)); }));
}

CannedAnswer vnis() {
    return {{Kind::vnis}, "[" + l2Vni(10) + "]"};
}

} // namespace

TEST(FrrEffort, FewEntriesAreReadAfterTheDeadline) {
    std::vector<CannedAnswer> const answers{vnis(), {{Kind::macs}, macsOf10(5)}};
    EXPECT_EQ(read(answers, passed()).facts, read(answers).facts);
    EXPECT_EQ(read(answers).facts.local.at("leaf1").macs.size(), 5U);
}

TEST(FrrEffort, ManyMacsAreNotReadAfterTheDeadline) {
    std::vector<CannedAnswer> const answers{vnis(), {{Kind::macs}, macsOf10(5000)}};
    EXPECT_EQ(timeOver(answers), noAnswer);
    EXPECT_EQ(read(answers).facts.local.at("leaf1").macs.size(), 5000U);
}

TEST(FrrEffort, ManyNeighboursAreNotReadAfterTheDeadline) {
    auto const entries = listed(5000, [](unsigned number) {
        return "\"2001:db8::" + std::to_string(number % 1000) + ":" +
               std::to_string(number / 1000) +
               R"(":{"type":"local","state":"active","mac":"02:00:00:00:00:01",)"
               R"("localSequence":0,"remoteSequence":0})";
    });
    std::vector<CannedAnswer> const answers{vnis(),
                                            {{Kind::neighbours}, R"({"10":{)" + entries + "}}"}};
    EXPECT_EQ(timeOver(answers), noAnswer);
    EXPECT_EQ(read(answers).facts.local.at("leaf1").bindings.size(), 5000U);
}

TEST(FrrEffort, ManyVnisAreNotReadAfterTheDeadline) {
    auto const list = listed(5000, [](unsigned number) { return l2Vni(number); });
    std::vector<CannedAnswer> const answers{{{Kind::vnis}, "[" + list + "]"}};
    EXPECT_EQ(timeOver(answers), noAnswer);
    EXPECT_EQ(read(answers).facts.remote.vnis.size(), 5000U);
}

TEST(FrrEffort, ManyRoutesAreNotReadAfterTheDeadline) {
    auto const routes = listed(2500, [](unsigned number) {
        return "\"10." + std::to_string(number / 250) + "." + std::to_string(number % 250) +
               R"(.0/24":[{"selected":true,"nexthops":[{"ip":"10.0.0.2","active":true}]}])";
    });
    std::vector<CannedAnswer> const answers{{{Kind::routes, {}, {}, "red"}, "{" + routes + "}"}};
    EXPECT_EQ(timeOver(answers), noAnswer);
    EXPECT_EQ(read(answers).facts.routers.at("red").routes.size(), 2500U);
}

TEST(FrrEffort, ManyMacsBehindASegmentOfManyVtepsAreNotJoinedAfterTheDeadline) {
    auto const entries = listed(100, [](unsigned number) {
        return "\"" + macOf(number) +
               R"(":{"type":"remote","remoteVtep":"0.0.0.0","localSequence":0,)"
               R"("remoteSequence":0,"esi":"03:01"})";
    });
    auto const vteps = listed(100, [](unsigned number) {
        return R"({"vtep":"10.1.0.)" + std::to_string(number + 1) + "\"}";
    });
    std::vector<CannedAnswer> const answers{
        vnis(),
        {{Kind::macsInDetail}, macsOf10(entries)},
        {{Kind::segments}, R"([{"esi":"03:01","vteps":[)" + vteps + "]}]"}};
    EXPECT_EQ(timeOver(answers), noAnswer);
    EXPECT_EQ(read(answers).facts.remote.macs.size(), 10000U);
}

TEST(FrrEffort, AConversationEndsAtTheDeadline) {
    auto zebra =
        zebraWithMacs(listed(5000, [](unsigned number) { return localMac(macOf(number)); }));
    EXPECT_EQ(zebra.ask().facts.local.at("leaf1").macs.size(), 5000U);
    try {
        converse(zebra.run(), {"leaf1"}, {}, passed());
        ADD_FAILURE() << "accepted";
    } catch (TimedOut const & failure) {
        EXPECT_STREQ(failure.what(), noAnswer);
    }
}

// The parser indexes a whole document before it gives the first value.
TEST(FrrEffort, ALongDocumentIsNotIndexedAfterTheDeadline) {
    auto const vniWithText = [](std::size_t bytes) {
        auto entry = l2Vni(10);
        entry.insert(1, R"("unknown":")" + std::string(bytes, 'x') + R"(",)");
        return std::vector<CannedAnswer>{{{Kind::vnis}, "[" + entry + "]"}};
    };
    EXPECT_EQ(timeOver(vniWithText(2 << 20)), noAnswer);
    EXPECT_EQ(timeOver(vniWithText(1 << 10)), "accepted");
}

// That takes many times as long as reading the document.
TEST(FrrEffort, ThePlaceOfAMistakeIsNotSearchedAfterTheDeadline) {
    auto const broken = [](unsigned count) {
        return std::vector<CannedAnswer>{
            {{Kind::vnis}, "[" + listed(count, [](unsigned) { return "1"; }) + ",\""}};
    };
    EXPECT_EQ(timeOver(broken(5000)), noAnswer);
    EXPECT_THROW(read(broken(50), passed()), AnswerError);
}

TEST(FrrEffort, ManyOddInterfacesAreNotLookedForInManyVnisAfterTheDeadline) {
    auto const list = listed(100, [](unsigned number) { return l2Vni(number + 1); });
    auto const interfaces = listed(100, [](unsigned number) {
        return "\"port" + std::to_string(number) +
               R"(":{"hardwareAddress":"odd","ipAddresses":[{"address":"10.0.0.1/24"}]})";
    });
    std::vector<CannedAnswer> const answers{
        {{Kind::vnis}, "[" + list + "]"},
        {{Kind::interfaces, {}, {}, "red"}, "{" + interfaces + "}"}};
    EXPECT_EQ(timeOver(answers), noAnswer);
    EXPECT_EQ(read(answers).findings.warning(), std::nullopt);
}

} // namespace vxshow::test
