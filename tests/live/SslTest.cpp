#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

namespace {

/// A server with an `ssl:` port, an authority that signed it and its clients, and another that
/// signed neither.
class Ssl : public testing::Test {
protected:
    static void SetUpTestSuite() {
        if (missingFor(Lab::database)) {
            return;
        }
        keys = std::make_unique<Folder>();
        outputOf({labProgram("certificates"), keys->path()});
        lab = std::make_unique<OvsdbLab>(Words{"--ssl", keys->file("server.key"),
                                               keys->file("server.pem"), keys->file("ca.pem")});
        lab->fillSmall();
    }

    static void TearDownTestSuite() {
        lab.reset();
        keys.reset();
    }

    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::database); }

    /// A fabric file with these files of `keys` as the client's.
    static std::string fabricWith(std::string const & key, std::string const & certificate,
                                  std::string const & authority) {
        FabricText text;
        text.database("rack1", lab->sslRemote(),
                      "private_key = '" + key + "'\ncertificate = '" + certificate +
                          "'\nca_certificate = '" + authority + "'\ntime_limit = 30");
        return keys->write("fabric.toml", text.text());
    }

    static void expectUnreachable(std::string const & fabric) {
        expectNothingShown(ask({"--fabric", fabric, "mac", "received"}), "rack1", "unreachable");
    }

    static std::unique_ptr<Folder> keys;
    static std::unique_ptr<OvsdbLab> lab;
};

std::unique_ptr<Folder> Ssl::keys;
std::unique_ptr<OvsdbLab> Ssl::lab;

} // namespace

TEST_F(Ssl, ItsKeyCertificateAndAuthorityOpenTheDatabase) {
    // Relative paths start at the folder of the fabric file.
    auto const fabric = fabricWith("client.key", keys->file("client.pem"), "ca.pem");
    for (Words const & listing : listings()) {
        EXPECT_EQ(shown(Words{"--fabric", fabric} + listing),
                  shown(Words{"--ovsdb", lab->remote()} + listing));
    }
    EXPECT_EQ(rowsOf(shown({"--fabric", fabric, "mac", "received"})).size(), 14U);
}

TEST_F(Ssl, AServerThatTheAuthorityHasNotSignedIsNotQueried) {
    auto const fabric = fabricWith("client.key", "client.pem", "other-ca.pem");
    expectUnreachable(fabric);
    auto const finished = ask({"--fabric", fabric, "mac", "received"});
    EXPECT_TRUE(finished.err.ends_with(": certificate verify failed\n")) << finished.err;
}

TEST(UnknownHost, IsTheReason) {
    VXSHOW_NEEDS_LAB(Lab::database);
    // No name under this domain exists (RFC 6761).
    auto const finished = ask({"--ovsdb", "tcp:leaf1.invalid:6640", "mac", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err,
              "vxshow: tcp:leaf1.invalid:6640: unreachable: no such host: leaf1.invalid\n");
}

TEST_F(Ssl, AServerRejectsAClientThatItsAuthorityHasNotSigned) {
    // The client may notice it while it connects or when it sends its request.
    auto const fabric = fabricWith("stranger.key", "stranger.pem", "ca.pem");
    auto const finished = ask({"--fabric", fabric, "mac", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(failuresOf(finished).size(), 1U);
}

TEST_F(Ssl, AMissingKeyIsAFailureOfTheSource) {
    expectNothingShown(
        ask({"--fabric", fabricWith("none.key", "client.pem", "ca.pem"), "mac", "received"}),
        "rack1", "unreachable");
}
