#include "vxshow/sources/ovsdb/Remote.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

constexpr auto hostExpected =
    "a HOST that is a name, an IPv4 address or an IPv6 address in brackets";
constexpr auto portExpected = "a PORT from 1 to 65535";
constexpr auto remoteExpected = "unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT";
constexpr auto blankExpected = "a remote without blanks, commas and control characters";
constexpr auto pathExpected = "the absolute path of a socket after unix:";

void expectTaken(std::string_view remote) {
    EXPECT_EQ(remoteRefusal(remote), std::nullopt) << remote;
}

void expectRefused(std::string_view remote, std::string const & expected) {
    EXPECT_EQ(remoteRefusal(remote), expected) << remote;
}

std::string shortFormError(std::string_view text) {
    try {
        readRemotes(text);
    } catch (RemoteError const & error) {
        return error.what();
    }
    return {};
}

} // namespace

TEST(Remote, AUnixSocketHasAnAbsolutePath) {
    expectTaken("unix:/run/openvswitch/db.sock");
    expectTaken("unix:/run/d\xC3\xA4mon:1.sock");
    expectRefused("unix:db.sock", pathExpected);
    expectRefused("unix:", pathExpected);
}

TEST(Remote, AHostIsANameOrAnAddress) {
    for (auto const * const host :
         {"db", "db1.example.net", "db1.example.net.", "my_db-1", "10.0.0.1", "[2001:db8::1]",
          "[::1]", "[fe80::1%eth0]", "10.0.0.a", "3com"}) {
        expectTaken("tcp:" + std::string(host) + ":6640");
        expectTaken("ssl:" + std::string(host));
    }
    for (auto const * const host :
         {"",     ".",          "-db",        ".db",       "db..net",   "d\xC3\xA4", "db/1",
          "db@1", "10.0.0",     "10.0.0.256", "10.0.0.1.", "7",         "[]",        "[",
          "[::1", "[10.0.0.1]", "[db]",       "[::1%]",    "[::1%e/0]", "[::g]"}) {
        expectRefused("tcp:" + std::string(host), hostExpected);
        expectRefused("ssl:" + std::string(host) + ":6640", hostExpected);
    }
}

TEST(Remote, ANameHasAtMost253Bytes) {
    expectTaken("tcp:" + std::string(253, 'a'));
    expectRefused("tcp:" + std::string(254, 'a'), hostExpected);
}

TEST(Remote, AnIpv6AddressNeedsBrackets) {
    expectRefused("tcp:2001:db8::1", hostExpected);
    expectRefused("tcp:fd00::1", portExpected);
    expectRefused("tcp:::1", hostExpected);
}

TEST(Remote, APortIsANumberOf16BitsOrLeftOutWithItsColon) {
    for (auto const * const port : {":1", ":6640", ":65535", ""}) {
        expectTaken("tcp:db" + std::string(port));
        expectTaken("ssl:[::1]" + std::string(port));
    }
    for (auto const * const port :
         {":", ":0", ":65536", ":4294967297", ":-1", ":+1", ":1a", ":0x1", ":1:2"}) {
        expectRefused("tcp:db" + std::string(port), portExpected);
        expectRefused("ssl:[::1]" + std::string(port), portExpected);
    }
    expectRefused("ssl:[::1]6640", portExpected);
}

TEST(Remote, NoRemoteHasABlankACommaOrAControlCharacter) {
    for (std::string const & bad :
         {std::string(" "), std::string("\t"), std::string("\n"), std::string("\x7F"),
          std::string("\x1B"), std::string(","), std::string(1, '\0')}) {
        expectRefused("unix:/a" + bad, blankExpected);
        expectRefused(bad + "unix:/a", blankExpected);
        expectRefused("tcp:db" + bad + "x", blankExpected);
    }
}

TEST(Remote, OtherConnectionMethodsAreRefused) {
    for (auto const * const remote : {"", "db", "/run/db.sock", "punix:/run/db.sock", "ptcp:6640",
                                      "TCP:db", "tcp", "ssl", "unix", "fd:3"}) {
        expectRefused(remote, remoteExpected);
    }
}

TEST(Remote, SslIsRecognized) {
    EXPECT_TRUE(isSslRemote("ssl:db"));
    EXPECT_FALSE(isSslRemote("tcp:ssl:"));
    EXPECT_FALSE(isSslRemote("ssl"));
}

TEST(Remotes, AreSeparatedByCommasWithOptionalBlanksAfterThem) {
    DatabaseAddress const address{{"tcp:db1", "tcp:[::1]:7", "unix:/run/db.sock"}};
    EXPECT_EQ(readRemotes("tcp:db1,tcp:[::1]:7,unix:/run/db.sock"), address);
    EXPECT_EQ(readRemotes("tcp:db1, tcp:[::1]:7, \t unix:/run/db.sock"), address);
    EXPECT_EQ(readRemotes("tcp:db1"), DatabaseAddress{{"tcp:db1"}});
}

TEST(Remotes, EachIsARemote) {
    EXPECT_EQ(shortFormError(""), "found \"\", expected unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT");
    EXPECT_EQ(shortFormError("tcp:db,"),
              "found \"\", expected unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT");
    EXPECT_EQ(shortFormError("tcp:db1, tcp:db2:0"),
              "found \"tcp:db2:0\", expected a PORT from 1 to 65535");
    EXPECT_EQ(shortFormError("tcp:db1 ,tcp:db2"),
              "found \"tcp:db1 \", expected a remote without blanks, commas and control "
              "characters");
    EXPECT_EQ(shortFormError("tcp:d\x1B"), "found \"tcp:d\\x1b\", expected a remote without "
                                           "blanks, commas and control characters");
}

TEST(Remotes, SslNeedsAFabricFile) {
    EXPECT_EQ(shortFormError("tcp:db1,ssl:db2"),
              "found \"ssl:db2\", expected unix:FILE or tcp:HOST:PORT; ssl: needs a fabric file, "
              "which names its keys");
}

TEST(Remotes, AreAtMost16) {
    std::string text = "tcp:db";
    for (int count = 1; count < 16; ++count) {
        text += ",tcp:db";
    }
    EXPECT_EQ(readRemotes(text).remotes.size(), 16U);
    EXPECT_EQ(shortFormError(text + ",tcp:db"), "found 17 remotes, expected at most 16");
}

} // namespace vxshow::test
