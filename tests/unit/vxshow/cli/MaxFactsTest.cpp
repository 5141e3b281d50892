#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

namespace {

/// A fabric file with a source that comes to 8 facts: two VNIs on both sides, and a member of the
/// flood list of each. `lines` limit it, and `file` limits all sources.
std::string fabricOf8Facts(std::string const & lines, std::string const & file = "") {
    std::string const vni =
        R"("type":"L2","vrf":"default","vtepIp":"10.0.0.1","numRemoteVteps":["10.0.0.2"])";
    return file + R"(
[[source]]
kind = "frr"
name = "leaf1"
remote_shell = false
)" + lines +
           R"(
command = ["sh", "-c", '''
for word; do
    case $word in show*) echo "host# $word";; esac
    case $word in "show evpn vni detail json") echo '[{"vni":10,)" +
           vni + R"(},{"vni":20,)" + vni + R"(}]';; esac
done
''', "vtysh"]
)";
}

Finished listingOf8Facts(std::vector<std::string> arguments, std::string const & lines = "",
                         std::string const & file = "") {
    arguments.insert(arguments.end(), {"--fabric", "-", "mac", "received"});
    return runVxshow(arguments, {.input = fabricOf8Facts(lines, file)});
}

std::string tooLarge(std::string const & most) {
    return "vxshow: leaf1: too large: more than " + most +
           " facts; max_facts in the fabric file, or --max-facts, allows more, and --vni asks for "
           "less\n";
}

void expectTooLarge(Finished const & finished, std::string const & most) {
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, tooLarge(most));
}

void expectListed(Finished const & finished) {
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_NE(finished.out.find("leaf1             20          0000.0000.0000  10.0.0.1"),
              std::string::npos)
        << finished.out;
}

} // namespace

TEST(MaxFacts, ASourceOfAsManyFactsIsListed) {
    expectListed(listingOf8Facts({}));
    expectListed(listingOf8Facts({"--max-facts", "8"}));
    expectListed(listingOf8Facts({}, "max_facts = 8"));
    expectListed(listingOf8Facts({}, "", "max_facts = 8"));
}

TEST(MaxFacts, ASourceOfMoreFactsIsRefusedWithItsName) {
    expectTooLarge(listingOf8Facts({"--max-facts", "7"}), "7");
    expectTooLarge(listingOf8Facts({}, "max_facts = 6"), "6");
    expectTooLarge(listingOf8Facts({}, "", "max_facts = 5"), "5");
}

TEST(MaxFacts, TheFabricFileTakesPrecedenceOverTheOption) {
    expectListed(listingOf8Facts({"--max-facts", "7"}, "max_facts = 8"));
    expectTooLarge(listingOf8Facts({"--max-facts", "8"}, "", "max_facts = 7"), "7");
}

TEST(MaxFacts, IsAPositiveWholeNumber) {
    for (std::string const number : {"0", "-1", "1e7", "10M", "4294967296"}) {
        EXPECT_EQ(refused({"--max-facts=" + number, "mac", "received"}),
                  "--max-facts: '" + number + "': expected a whole number from 1 to 4294967295");
    }
}
