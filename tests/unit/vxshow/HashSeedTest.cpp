#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

using Arguments = std::vector<std::string>;

/// Several values of the variable; when it is empty, each process draws its own secret.
std::vector<std::string> const seeds{"", "1", "2", "18446744073709551615"};

Finished withSeed(std::string const & seed, Arguments const & arguments) {
    return runVxshow(arguments, {.inChild = [&] { setenv("VEX_HASH_SEED", seed.c_str(), 1); }});
}

/// What every seed prints, which must be the same.
std::string printedWithEverySeed(Arguments const & arguments) {
    Finished const first = withSeed(seeds.front(), arguments);
    EXPECT_EQ(first.status, 0) << first.err;
    for (std::string const & seed : seeds) {
        Finished const again = withSeed(seed, arguments);
        EXPECT_EQ(again.out, first.out) << "seed '" << seed << "'";
        EXPECT_EQ(again.err, first.err) << "seed '" << seed << "'";
        EXPECT_EQ(again.status, first.status) << "seed '" << seed << "'";
    }
    return first.out;
}

/// Every command that lists, with the filters that select by a hashed set.
std::vector<Arguments> const listings{
    {"mac", "received"},   {"mac", "received", "--vtep", "10.0.0.1", "10.0.0.2", "10.0.0.3"},
    {"mac", "advertised"}, {"mac", "advertised", "--dest", "evpn"},
    {"arp", "received"},   {"arp", "advertised"},
    {"router", "map"},     {"router", "map", "--vtep", "10.0.0.1", "10.0.0.2", "10.0.0.3"},
    {"router", "detail"},  {"router", "routes"}};

/// The same listing as `model --of` shows its objects.
Arguments objectsOf(Arguments const & listing) {
    Arguments arguments{"model", "--of", listing[0] + " " + listing[1]};
    arguments.insert(arguments.end(), listing.begin() + 2, listing.end());
    return arguments;
}

Arguments with(Arguments arguments, Arguments const & more) {
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

void expectSameWithEverySeed(std::string const & state) {
    for (Arguments const & listing : listings) {
        SCOPED_TRACE(listing[0] + " " + listing[1]);
        for (Arguments const & command : {listing, objectsOf(listing)}) {
            for (Arguments const & form : {Arguments{}, {"--json"}}) {
                printedWithEverySeed(with(command, with({"--state", state}, form)));
            }
        }
    }
}

/// A state in which a listing shows the first of several: switches with several active VTEPs,
/// uplinks with several VLANs, two entries of one VNI that contradict each other.
std::string contradictions() {
    std::string switches;
    std::string vteps;
    std::string published;
    std::string uplinks;
    std::string entries;
    for (int i = 10; i < 30; ++i) {
        std::string const n = std::to_string(i);
        std::string const id = "\"02:00:00:00:00:" + n + "\"";
        std::string own;
        std::string ports;
        for (int k = 1; k < 7; ++k) {
            std::string const vtep = "\"10." + n + ".0." + std::to_string(k) + "\"";
            own += (own.empty() ? "" : ", ") + vtep;
            vteps += (vteps.empty() ? "" : ", ") + vtep + R"(: {"active": )" +
                     (k % 3 == 0 ? "false" : "true") + R"(, "switches": [)" + id + "]}";
            ports += (ports.empty() ? "" : ", ") + std::string(R"({"port": "Et)") +
                     std::to_string(k) + R"(", "vlan": )" + std::to_string(100 * k + i) + "}";
        }
        std::string const comma = switches.empty() ? "" : ", ";
        switches += comma + id + R"(: {"vteps": [)" + own + "]}";
        published += comma + id + R"(: {"vxlancontroller/version2/logicalRouter/red": "Vxlan"})";
        uplinks += comma + "\"10.9." + n + R"(.1/31": {"mac": "02:00:00:00:00:0b", "ports": [)" +
                   ports + "]}";
        for (std::string const zeros : {"", "0", "00"}) {
            entries += (entries.empty() ? "\"" : ", \"") + zeros + n +
                       R"(": {"unicast": {"02:00:00:00:00:01": {"vtep": "10.0.0.)" +
                       std::to_string(zeros.size() + 1) + "\"}}}";
        }
    }
    return R"({"format": "vxlan-controller-state", "version": 1, "advertised": {"vnis": {)" +
           entries + R"(}}, "routers": {"switches": {)" + switches + R"(}, "vteps": {)" + vteps +
           R"(}, "published": {)" + published + R"(}, "status": {"red": {"uplinks": {)" + uplinks +
           "}}}}}";
}

} // namespace

TEST(HashSeed, EveryListingOfTheExampleIsTheSame) {
    expectSameWithEverySeed(EXAMPLE_FABRIC);
}

TEST(HashSeed, EveryListingOfAStateThatContradictsItselfIsTheSame) {
    TemporaryFile const state(contradictions());
    expectSameWithEverySeed(state.path());
}

TEST(HashSeed, ACaptureIsTheSame) {
    TemporaryFile const state(contradictions());
    for (std::string const & path : {std::string(EXAMPLE_FABRIC), std::string(state.path())}) {
        EXPECT_FALSE(printedWithEverySeed({"capture", "-", "--state", path}).empty());
    }
}

TEST(HashSeed, TheTypesOfTheModelAreTheSame) {
    printedWithEverySeed({"model"});
    printedWithEverySeed({"model", "--json"});
}

TEST(HashSeed, TablesThatOneProcessPublishesAreReadByOthersWithOtherSeeds) {
    std::string first;
    for (std::string const & seed : seeds) {
        Folder const folder;
        EXPECT_EQ(
            withSeed(seed, {"tables", "publish", folder.path(), "--state", EXAMPLE_FABRIC}).status,
            0);
        auto const shown =
            printedWithEverySeed({"mac", "received", "--json", "--tables", folder.path()});
        first = first.empty() ? shown : first;
        EXPECT_EQ(shown, first);
        // Both filters together make the reader search instead of walk.
        auto const found =
            printedWithEverySeed({"mac", "received", "--json", "--vni", "20", "--mac",
                                  "0000.5e00.53c3", "--tables", folder.path()});
        EXPECT_NE(found.find("00:00:5e:00:53:c3"), std::string::npos);
    }
}

namespace {

/// The bytes of the table of hosts that a process with this seed publishes.
std::string publishedHosts(std::string const & seed) {
    Folder const folder;
    EXPECT_EQ(
        withSeed(seed, {"tables", "publish", folder.path(), "--state", EXAMPLE_FABRIC}).status, 0);
    std::ifstream const file(folder.file("received-hosts"));
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

} // namespace

TEST(HashSeed, TheSameSeedPublishesTheSameBytes) {
    auto const once = publishedHosts("5");
    EXPECT_FALSE(once.empty());
    EXPECT_EQ(publishedHosts("5"), once);
    EXPECT_NE(publishedHosts("6"), once);
}

TEST(HashSeed, WithoutASeedEachProcessDrawsItsOwn) {
    EXPECT_NE(publishedHosts(""), publishedHosts(""));
}
