#include "vxshow/sources/ovsdb/OvsdbKind.h"

#include "tests/unit/vxshow/sources/fabric/Fabrics.h"
#include "tests/unit/vxshow/system/TextFile.h"
#include "vxshow/sources/ovsdb/DatabaseAccess.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using sources::ovsdb::DatabaseAccess;
using sources::ovsdb::DatabaseAddress;

namespace {

auto const kindMac1 = Nolt::EthAddr::fromString("02:00:00:00:00:01");
auto const kindMac2 = Nolt::EthAddr::fromString("02:00:00:00:00:02");

constexpr auto sslFiles = "private_key = \"/k.pem\"\ncertificate = \"c.pem\"\n"
                          "ca_certificate = \"pki/ca.pem\"\n";

DatabaseAddress addressOf(Source const & source) {
    return accessOf<DatabaseAccess>(source).address();
}

std::vector<std::string> remotesOf(std::string_view value) {
    return addressOf(sourceOf(databaseAt(value))).remotes;
}

/// The address that the keys of a database at `ssl:db` give, with that folder.
DatabaseAddress sslAddress(std::string_view lines, std::string const & folder) {
    auto const document = text::readToml("remotes = [\"ssl:db\"]\n" + std::string(lines));
    auto const access = sources::ovsdb::kind().readAccess(text::TomlField(document), folder);
    return dynamic_cast<DatabaseAccess const &>(*access).address();
}

} // namespace

TEST(OvsdbKind, RemotesAreKeptAsWritten) {
    EXPECT_EQ(remotesOf(R"(["unix:/run/db.sock", "tcp:db1:6641", "tcp:[::1]"])"),
              (std::vector<std::string>{"unix:/run/db.sock", "tcp:db1:6641", "tcp:[::1]"}));
}

TEST(OvsdbKind, ADatabaseHas1To16Remotes) {
    std::string list = "\"tcp:db\"";
    for (int count = 1; count < 16; ++count) {
        list += ", \"tcp:db\"";
    }
    EXPECT_EQ(remotesOf('[' + list + ']').size(), 16U);
    EXPECT_EQ(refusalOf(databaseAt('[' + list + ", \"tcp:db\"]")),
              "4:11: source[0].remotes: found an array of 17, expected an array of 1 to 16 "
              "remotes");
    EXPECT_EQ(refusalOf(databaseAt("[]")),
              "4:11: source[0].remotes: found an empty array, expected an array of 1 to 16 "
              "remotes");
    EXPECT_EQ(refusalOf(databaseAt("\"tcp:db\"")),
              "4:11: source[0].remotes: found \"tcp:db\", expected an array of 1 to 16 remotes");
    EXPECT_EQ(refusalOf("[[source]]\nkind = \"hardware_vtep\"\nname = \"leaf1\""),
              "1:1: source[0]: found a table, expected \"remotes\" in it");
}

TEST(OvsdbKind, AWrongRemoteIsRefusedAtItsPlace) {
    EXPECT_EQ(refusalOf(databaseAt("[\"tcp:db1\",\n  \"tcp:db2:0\"]")),
              "5:3: source[0].remotes[1]: found \"tcp:db2:0\", expected a PORT from 1 to 65535");
    EXPECT_EQ(refusalOf(databaseAt("[6640]")), "4:12: source[0].remotes[0]: found 6640, expected "
                                               "unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT");
}

TEST(OvsdbKind, AnSslRemoteHasItsFiles) {
    auto const ssl = sslAddress(sslFiles, "/etc/vxshow/").ssl;
    ASSERT_TRUE(ssl);
    EXPECT_EQ(*ssl,
              (DatabaseAddress::Ssl{"/k.pem", "/etc/vxshow/c.pem", "/etc/vxshow/pki/ca.pem"}));
}

TEST(OvsdbKind, ARelativeFileNameCountsFromTheFolderOfTheFile) {
    TextFile const file(databaseAt("[\"ssl:db\"]", sslFiles));
    auto const folder = file.path().substr(0, file.path().rfind('/') + 1);
    auto const source = sourceOf(databaseAt("[\"tcp:db\", \"ssl:db\"]", sslFiles));
    EXPECT_EQ(addressOf(source).ssl->certificate, folder + "c.pem");
}

TEST(OvsdbKind, NoFileNameDisablesTheCheckOfTheServer) {
    auto const address = sslAddress("private_key = \"k\"\ncertificate = \"c\"\n"
                                    "ca_certificate = \"none\"",
                                    "./");
    EXPECT_EQ(address.ssl->caCertificate, "./none");
}

TEST(OvsdbKind, AnSslRemoteNeedsAllThreeFiles) {
    EXPECT_EQ(refusalOf(databaseAt("[\"tcp:db\", \"ssl:db\"]",
                                   "certificate = \"c\"\nca_certificate = \"a\"")),
              "1:1: source[0]: found a table, expected \"private_key\" in it, since a remote is "
              "ssl:");
    EXPECT_EQ(
        refusalOf(databaseAt("[\"ssl:db\"]", "private_key = \"k\"\nca_certificate = \"a\"")),
        "1:1: source[0]: found a table, expected \"certificate\" in it, since a remote is ssl:");
    EXPECT_EQ(refusalOf(databaseAt("[\"ssl:db\"]", "private_key = \"k\"\ncertificate = \"c\"")),
              "1:1: source[0]: found a table, expected \"ca_certificate\" in it, since a remote is "
              "ssl:");
}

TEST(OvsdbKind, WithoutAnSslRemoteThereAreNoFiles) {
    for (std::string const key : {"private_key", "certificate", "ca_certificate"}) {
        EXPECT_EQ(refusalOf(database(key + " = \"x\"")),
                  "5:" + std::to_string(key.size() + 4) + ": source[0]." + key +
                      ": found \"x\", expected no such key, since no remote is ssl:");
    }
}

TEST(OvsdbKind, AFileNameIsNotEmpty) {
    for (std::string const key : {"private_key", "certificate", "ca_certificate"}) {
        for (auto const & [written, shown] : {std::pair(R"("")", R"("")"), std::pair("7", "7"),
                                              std::pair(R"("a\u0000")", R"("a\x00")")}) {
            std::string lines;
            for (std::string const other : {"private_key", "certificate", "ca_certificate"}) {
                lines += other == key ? key + " = " + written + " " : other + " = \"x\"";
                lines += '\n';
            }
            EXPECT_NE(refusalOf(databaseAt("[\"ssl:db\"]", lines))
                          .find("source[0]." + key + ": found " + shown +
                                ", expected the name of a file"),
                      std::string::npos);
        }
    }
}

TEST(OvsdbKind, ADatabaseHasSystemIdentifiersBySwitch) {
    auto const source = sourceOf(database("[source.system_ids]\nleaf1 = \"02:00:00:00:00:01\"\n"
                                          "\"leaf 2\" = \"0200.0000.0002\"\n"));
    EXPECT_EQ(accessOf<DatabaseAccess>(source).systemIds(),
              (std::map<std::string, Nolt::EthAddr>{{"leaf1", kindMac1}, {"leaf 2", kindMac2}}));
    EXPECT_EQ(source.systemId, std::nullopt);
    auto const inOneLine = sourceOf(database("system_ids = { leaf1 = \"02:00:00:00:00:01\" }"));
    EXPECT_EQ(accessOf<DatabaseAccess>(inOneLine).systemIds(),
              (std::map<std::string, Nolt::EthAddr>{{"leaf1", kindMac1}}));
}

TEST(OvsdbKind, EachSystemIdentifierIsAMacAddress) {
    EXPECT_EQ(refusalOf(database("[source.system_ids]\n\"leaf 1\" = \"x\"")),
              "6:12: source[0].system_ids.\"leaf 1\": found \"x\", expected an Ethernet address "
              "such as 00:1c:73:0a:0b:0c, 00-1c-73-0a-0b-0c or 001c.730a.0b0c");
    EXPECT_EQ(refusalOf(database("system_ids = \"02:00:00:00:00:01\"")),
              "5:14: source[0].system_ids: found \"02:00:00:00:00:01\", expected a table of system "
              "identifiers by switch");
}

TEST(OvsdbKind, TheShortFormNamesASwitchAfterItsRemotes) {
    auto const source = sources::ovsdb::sourceAt("tcp:db1:6641, unix:/run/db.sock");
    EXPECT_EQ(source.name, "tcp:db1:6641, unix:/run/db.sock");
    EXPECT_EQ(source.role, Role::switches);
    EXPECT_EQ(addressOf(source).remotes,
              (std::vector<std::string>{"tcp:db1:6641", "unix:/run/db.sock"}));
}

TEST(OvsdbKind, ATabBetweenRemotesIsABlankInTheName) {
    EXPECT_EQ(sources::ovsdb::sourceAt("tcp:db1:6641,\ttcp:db2:6641").name,
              "tcp:db1:6641, tcp:db2:6641");
}

} // namespace vxshow::test
