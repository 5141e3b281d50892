#include "tests/unit/vxshow/sources/frr/FakeZebra.h"
#include "vxshow/sources/Failure.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

using Kind = Question::Kind;

struct AnsweredQuestion {
    Question question;
    std::string text;
};

bool isWithinLimit(std::size_t maxFacts, std::vector<AnsweredQuestion> const & answers) {
    std::vector<Document> documents;
    for (auto const & [question, text] : answers) {
        documents.push_back({question, system::FileBytes::copyOf(text)});
    }
    try {
        readDocuments(documents, {.name = "leaf1", .maxFacts = maxFacts});
    } catch (TooManyFacts const &) {
        return false;
    }
    return true;
}

/// How many facts the answers come to: the least limit that they are within.
std::size_t factsIn(std::vector<AnsweredQuestion> const & answers) {
    std::size_t facts = 1;
    while (facts < 1000 && !isWithinLimit(facts, answers)) {
        ++facts;
    }
    return facts;
}

/// VNI 10 on both sides, and a member of the flood list of each.
constexpr std::size_t ofVni10 = 4;

AnsweredQuestion vni10() {
    return {{Kind::vnis}, "[" + l2Vni(10) + "]"};
}

AnsweredQuestion macsOfVni10(Kind kind, std::string const & entries) {
    return {{kind}, R"({"10":{"macs":{)" + entries + "}}}"};
}

std::string const segmentedMac =
    R"("02:00:00:00:00:03":{"type":"remote","remoteVtep":"0.0.0.0","localSequence":0,)"
    R"("remoteSequence":0,"esi":"03:01"})";

} // namespace

TEST(FrrFactLimit, AVniIsAFactOfEachSideAndSoIsEachMemberOfItsFloodLists) {
    EXPECT_EQ(factsIn({vni10()}), ofVni10);
}

TEST(FrrFactLimit, AMacIsOneFact) {
    auto const entries =
        localMac("02:00:00:00:00:01") + "," + remoteMac("02:00:00:00:00:02", "10.0.0.2");
    EXPECT_EQ(factsIn({vni10(), macsOfVni10(Kind::macs, entries)}), ofVni10 + 2);
}

TEST(FrrFactLimit, MacsThatALaterAnswerReplacesDoNotCount) {
    auto const entries = localMac("02:00:00:00:00:01");
    EXPECT_EQ(factsIn({vni10(), macsOfVni10(Kind::macs, entries),
                       macsOfVni10(Kind::macsInDetail, entries)}),
              ofVni10 + 1);
}

TEST(FrrFactLimit, AMacBehindASegmentCountsForEachVtep) {
    AnsweredQuestion const segment{{Kind::segments},
                                   R"([{"esi":"03:01","vteps":[{"vtep":"10.1.0.1"},)"
                                   R"({"vtep":"10.1.0.2"},{"vtep":"10.1.0.3"}]}])"};
    EXPECT_EQ(factsIn({vni10(), macsOfVni10(Kind::macsInDetail, segmentedMac), segment}),
              ofVni10 + 3);
}

TEST(FrrFactLimit, ANeighbourIsOneFact) {
    AnsweredQuestion const neighbours{
        {Kind::neighbours},
        R"({"10":{"10.1.1.1":{"type":"local","state":"active","mac":"02:00:00:00:00:01",)"
        R"("localSequence":0,"remoteSequence":0}}})"};
    EXPECT_EQ(factsIn({vni10(), neighbours}), ofVni10 + 1);
}

TEST(FrrFactLimit, ARouteCountsOnceForEachNexthopAndOnceWithoutAny) {
    auto const route = [](std::string const & nexthops) {
        return R"({"10.1.0.0/16":[{"selected":true,"nexthops":[)" + nexthops + "]}]}";
    };
    Question const routes{Kind::routes, {}, {}, "red"};
    EXPECT_EQ(factsIn({vni10(), {routes, route("")}}), ofVni10 + 1);
    EXPECT_EQ(factsIn({vni10(),
                       {routes, route(R"({"ip":"10.0.0.2","active":true},)"
                                      R"({"ip":"10.0.0.3","active":true})")}}),
              ofVni10 + 2);
}

TEST(FrrFactLimit, APortCountsForEachVniOfItsInterface) {
    AnsweredQuestion const vrfs{{Kind::vrfs}, R"({"vrfs":[{"vrf":"red","state":"Up"}]})"};
    AnsweredQuestion const interfaces{
        {Kind::interfaces, {}, {}, "red"},
        R"({"br10":{"ipAddresses":[{"address":"10.1.0.1/24"},{"address":"10.1.1.1/24"}]}})"};
    EXPECT_EQ(factsIn({vni10(), vrfs, interfaces}), ofVni10 + 2);
}

} // namespace vxshow::test
