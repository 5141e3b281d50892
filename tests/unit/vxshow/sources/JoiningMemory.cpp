#include "tests/unit/vxshow/sources/JoiningMemory.h"

#include "tests/unit/vxshow/sources/CountedMemory.h"
#include "vxshow/sources/FactBudget.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;

namespace {

std::size_t countOf(SideFacts const & side) {
    return side.vnis.size() + side.macs.size() + side.floods.size() + side.bindings.size();
}

std::size_t countOf(RouterFacts const & router) {
    std::size_t count = 0;
    for (auto const & [address, ports] : router.ports) {
        count += ports.size();
    }
    for (auto const & [prefix, nexthops] : router.routes) {
        count += std::max<std::size_t>(nexthops.size(), 1);
    }
    return count;
}

} // namespace

std::size_t countOf(Facts const & facts) {
    auto count = countOf(facts.remote);
    for (auto const & [name, side] : facts.local) {
        count += countOf(side);
    }
    for (auto const & [name, known] : facts.switches) {
        for (auto const & router : known.routers) {
            count += factsOfRouter(router);
        }
    }
    for (auto const & [name, router] : facts.routers) {
        count += countOf(router);
    }
    return count;
}

void expectWithinBounds(std::string const & shape, std::string const & answer,
                        std::function<Answer(std::string const &)> const & read) {
    PeakMemory const memory;
    auto const made = read(answer);
    auto const bytes = memory.bytes();
    auto const facts = countOf(made.facts);
    testing::Test::RecordProperty("answer_bytes", std::to_string(answer.size()));
    testing::Test::RecordProperty("facts", std::to_string(facts));
    testing::Test::RecordProperty("bytes", std::to_string(bytes));
    EXPECT_LE(bytes, answer.size() * mostBytesOfAnswerByte + facts * mostBytesOfFact)
        << shape << ": " << answer.size() << " bytes of answer, " << facts << " facts";
}

} // namespace vxshow::test
