#include "tests/unit/vxshow/sources/fabric/Fabrics.h"

#include <gtest/gtest.h>

#include <random>

namespace vxshow::test {

using namespace sources;

namespace {

constexpr int mutants = 5000;

constexpr std::string_view good = R"(# the fabric
[[source]]
kind = "hardware_vtep"
name = "spine"
role = "hsc"
time_limit = 2.5
system_id = "02:00:00:00:00:01"
remotes = ["ssl:[fe80::1%eth0]:6640", 'tcp:db1.example.net', "unix:/run/db.sock"]
private_key = "k"
certificate = "pki/c"
ca_certificate = "/ca"
[source.system_ids]
leaf1 = "0200.0000.0002"
"leaf\u0020 2" = """02-00-00-00-00-03"""

[[source]]
kind = "frr"
name = "leaf7"
command = [
  "ssh", "leaf7", # there
  "vtysh",
]
path_space = "blue"
remote_shell = false
)";

/// Changes, drops or repeats some bytes of `text`.
std::string mutantOf(std::string text, std::mt19937 & random) {
    constexpr std::string_view telling = "[]{}\"'\\.,=#-_\n\r\t 0119eEnTZ:+u\x00\x7F\xC3\xA4\xFF";
    for (auto changes = random() % 4 + 1; changes > 0 && !text.empty(); --changes) {
        auto const at = random() % text.size();
        switch (random() % 4) {
        case 0:
            text[at] = telling[random() % telling.size()];
            break;
        case 1:
            text[at] = static_cast<char>(random() % 256);
            break;
        case 2:
            text.erase(at, random() % 12 + 1);
            break;
        default:
            text.insert(random() % text.size(), text.substr(at, random() % 40 + 1));
        }
    }
    return text;
}

} // namespace

TEST(FabricFileMutants, AreReadOrRefusedWithALine) {
    ASSERT_EQ(refusalOf(good), "");
    std::mt19937 random(1);
    int refused = 0;
    for (int count = 0; count < mutants; ++count) {
        auto const mutant = mutantOf(std::string(good), random);
        std::string refusal;
        ASSERT_NO_THROW(refusal = refusalOf(mutant)) << mutant;
        refused += refusal.empty() ? 0 : 1;
        for (char const byte : refusal) {
            ASSERT_TRUE(byte >= ' ' && byte <= '~') << refusal << '\n' << mutant;
        }
        ASSERT_TRUE(refusal.empty() || (refusal[0] >= '1' && refusal[0] <= '9')) << refusal;
    }
    EXPECT_GT(refused, mutants / 2);
    EXPECT_LT(refused, mutants);
}

} // namespace vxshow::test
