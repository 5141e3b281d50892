#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

/// What of `side` is in `vni`; of the MAC addresses, only `mac` unless it is zero.
SideFacts partOf(SideFacts side, Vxlan::Vni vni, Nolt::EthAddr mac = {}) {
    auto const keep = [](auto & facts, auto const & isKept) {
        facts.erase(std::remove_if(facts.begin(), facts.end(),
                                   [&](auto const & fact) { return !isKept(fact); }),
                    facts.end());
    };
    auto const isOfVni = [&](auto const & fact) { return fact.vni == vni; };
    keep(side.vnis, [&](Vxlan::Vni candidate) { return candidate == vni; });
    keep(side.macs, [&](MacPlace const & place) {
        return isOfVni(place) && (mac.isZero() || place.mac == mac);
    });
    keep(side.floods, isOfVni);
    keep(side.bindings, isOfVni);
    return side;
}

/// Expects the answer for a selection to be that part of the answer for everything.
void expectPart(state::Selection const & selection) {
    for (auto const * const vtep : {"vtep1", "vtep2"}) {
        FakeZebra zebra(vtep);
        auto const whole = zebra.ask().facts;
        auto const selected = zebra.ask(selection);
        auto const vni = selection.vni.vni();
        EXPECT_TRUE(selected.fits);
        EXPECT_FALSE(selected.findings.warning());
        auto const part = [&](SideFacts const & side) { return partOf(side, vni, selection.mac); };
        EXPECT_EQ(selected.facts.remote, part(whole.remote)) << vtep << " " << vni.stringValue();
        EXPECT_EQ(selected.facts.local.at("leaf1"), part(whole.local.at("leaf1")))
            << vtep << " " << vni.stringValue();
    }
}

state::Selection tablesOf(unsigned vni) {
    state::Selection selection;
    selection.routers = false;
    selection.vni = Vxlan::Vni(vni);
    return selection;
}

} // namespace

TEST(FrrCaptures, OneVniIsTheSameAsAmongAll) {
    for (unsigned const vni : {10U, 20U, 4098U}) {
        expectPart(tablesOf(vni));
    }
}

TEST(FrrCaptures, OneMacAddressIsTheSameAsAmongAll) {
    for (auto const * const mac :
         {"02:40:98:00:e5:01", "02:40:98:00:ee:01", "02:40:98:00:ee:02", "02:40:98:00:ee:77"}) {
        auto selection = tablesOf(4098);
        selection.mac = Nolt::EthAddr::fromString(mac);
        expectPart(selection);
    }
}

TEST(FrrCaptures, AMacKnownOnlyFromArpIsNotShownEvenByItsAddress) {
    auto selection = tablesOf(20);
    selection.mac = Nolt::EthAddr::fromString("02:00:20:00:01:99");
    FakeZebra zebra("vtep1");
    EXPECT_NE(zebra["show evpn mac vni 20 mac 02:00:20:00:01:99 json"].find("auto"),
              std::string::npos);
    expectPart(selection);
}

TEST(FrrCaptures, AnUnknownVniIsEmpty) {
    auto const answer = FakeZebra("vtep1").ask(tablesOf(77));
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(linesOf(answer.facts), "switch leaf1 id 00:00:5e:00:53:e1\n");
}

TEST(FrrCaptures, TheDetailedListIsTheSame) {
    for (std::string const vtep : {"vtep1", "vtep2"}) {
        using Kind = Question::Kind;
        std::vector<Document> documents;
        for (auto const & [kind, name] :
             {std::pair{Kind::vnis, "show-evpn-vni-detail"},
              std::pair{Kind::macsInDetail, "show-evpn-mac-vni-all-detail"},
              std::pair{Kind::segments, "show-evpn-es-detail"}}) {
            documents.push_back(
                {{kind}, system::FileBytes::copyOf(frrCapture(vtep + "/" + name + ".json"))});
        }
        auto const detailed = readDocuments(documents, {"leaf1"});
        auto const whole = FakeZebra(vtep).ask().facts;
        EXPECT_TRUE(detailed.fits);
        EXPECT_EQ(detailed.facts.remote.macs, whole.remote.macs);
        EXPECT_EQ(detailed.facts.local.at("leaf1").macs, whole.local.at("leaf1").macs);
    }
}

} // namespace vxshow::test
