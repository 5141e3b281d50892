#include "tests/unit/vxshow/sources/JoiningMemory.h"
#include "vxshow/sources/frr/Documents.h"

#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

using Kind = Question::Kind;

struct Printed {
    Question question;
    std::string text;
};

/// Takes all documents of the answer as one.
void expectFrrBounded(std::string const & shape, std::vector<Printed> const & documents) {
    std::string all;
    for (auto const & document : documents) {
        all.append(document.text);
    }
    std::vector<Document> answers;
    for (auto const & document : documents) {
        answers.push_back({document.question, system::FileBytes::copyOf(document.text)});
    }
    expectWithinBounds(shape, all, [&](std::string const &) {
        return readDocuments(answers, {"leaf1"}, {.details = true});
    });
}

template <class Make>
std::string commaSeparated(unsigned count, Make && make) {
    std::string text;
    for (unsigned number = 0; number < count; ++number) {
        text.append(number == 0 ? "" : ",").append(make(number));
    }
    return text;
}

std::string countedMac(unsigned number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "02:00:00:%02x:%02x:%02x", number >> 16 & 0xFF,
                  number >> 8 & 0xFF, number & 0xFF);
    return text.data();
}

std::string countedIp(unsigned number) {
    return "10." + std::to_string(number >> 16 & 0xFF) + "." + std::to_string(number >> 8 & 0xFF) +
           "." + std::to_string(number & 0xFF);
}

std::string vniWith(unsigned number, std::string const & remoteVteps) {
    return R"({"vni":)" + std::to_string(number) +
           R"(,"type":"L2","vrf":"red","tenantVrf":"red","vxlanInterface":"vx","sviInterface":"br",)"
           R"("vtepIp":"10.0.0.1","numMacs":1,"numArpNd":0,"numRemoteVteps":[)" +
           remoteVteps + "]}";
}

Printed vni10() {
    return {{Kind::vnis}, "[" + vniWith(10, "") + "]"};
}

std::string macsOfVni10(unsigned count, std::string const & entry) {
    return R"({"10":{"macs":{)" +
           commaSeparated(
               count,
               [&](unsigned number) { return "\"" + countedMac(count - number) + "\":" + entry; }) +
           "}}}";
}

} // namespace

TEST(FrrMemory, OfMacs) {
    expectFrrBounded("MACs", {vni10(),
                              {{Kind::macs},
                               macsOfVni10(50'000, R"({"type":"remote","remoteVtep":"10.0.0.2",)"
                                                   R"("localSequence":0,"remoteSequence":1})")}});
}

TEST(FrrMemory, OfStickyMacs) {
    expectFrrBounded("sticky MACs",
                     {vni10(),
                      {{Kind::macs},
                       macsOfVni10(50'000, R"({"type":"local","intf":"host1","stickyMac":true,)"
                                           R"("localSequence":0,"remoteSequence":0})")}});
}

TEST(FrrMemory, OfMacsBehindASegmentOfManyVteps) {
    auto const vteps = commaSeparated(
        300, [](unsigned number) { return R"({"vtep":")" + countedIp(number + 256) + "\"}"; });
    expectFrrBounded("300 MACs behind a segment of 300 VTEPs",
                     {vni10(),
                      {{Kind::macsInDetail},
                       macsOfVni10(300, R"({"type":"remote","remoteEs":"03:01",)"
                                        R"("localSequence":0,"remoteSequence":0,"esi":"03:01"})")},
                      {{Kind::segments}, R"([{"esi":"03:01","vteps":[)" + vteps + "]}]"}});
}

TEST(FrrMemory, OfNeighbours) {
    auto const entries = commaSeparated(50'000, [](unsigned number) {
        return "\"" + countedIp(50'000 - number) +
               R"(":{"type":"local","state":"active","mac":"02:00:00:00:00:01",)"
               R"("localSequence":0,"remoteSequence":0})";
    });
    expectFrrBounded("neighbours", {vni10(), {{Kind::neighbours}, R"({"10":{)" + entries + "}}"}});
}

TEST(FrrMemory, OfVnisWithFloodLists) {
    auto const remote =
        commaSeparated(100, [](unsigned number) { return "\"" + countedIp(number + 256) + "\""; });
    auto const vnis =
        commaSeparated(500, [&](unsigned number) { return vniWith(number + 1, remote); });
    expectFrrBounded("500 VNIs with 100 VTEPs each", {{{Kind::vnis}, "[" + vnis + "]"}});
}

TEST(FrrMemory, OfAddressesOfAnInterfaceOfManyVnis) {
    auto const vnis = commaSeparated(300, [](unsigned number) { return vniWith(number + 1, ""); });
    auto const addresses = commaSeparated(300, [](unsigned number) {
        return R"({"address":")" + countedIp(number + 256) + R"(/8"})";
    });
    expectFrrBounded(
        "300 addresses of an interface of 300 VNIs",
        {{{Kind::vnis}, "[" + vnis + "]"},
         {{Kind::vrfs}, R"({"vrfs":[{"vrf":"red","vni":5,"state":"Up"}]})"},
         {{Kind::interfaces, {}, {}, "red"}, R"({"br":{"ipAddresses":[)" + addresses + "]}}"}});
}

TEST(FrrMemory, OfRoutes) {
    auto const routes = commaSeparated(20'000, [](unsigned number) {
        return "\"" + countedIp(number) +
               R"(/32":[{"selected":true,"nexthops":[{"ip":"10.0.0.2","active":true}]}])";
    });
    expectFrrBounded("routes", {vni10(), {{Kind::routes, {}, {}, "red"}, "{" + routes + "}"}});
}

} // namespace vxshow::test
