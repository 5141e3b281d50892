#include "vxshow/sources/fabric/AccessReader.h"

#include "tests/unit/vxshow/sources/fabric/Fabrics.h"
#include "tests/unit/vxshow/system/TextFile.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::fabric;

namespace {

constexpr auto sslFiles = "private_key = \"/k.pem\"\ncertificate = \"c.pem\"\n"
                          "ca_certificate = \"pki/ca.pem\"\n";

std::vector<std::string> remotesOf(std::string_view value) {
    return std::get<sources::ovsdb::DatabaseAddress>(sourceOf(databaseAt(value)).access).remotes;
}

sources::frr::VtyshCommand commandOf(std::string_view lines) {
    return std::get<sources::frr::VtyshCommand>(sourceOf(frr(lines)).access);
}

/// What the keys of a database at `ssl:db` come to, with that folder.
sources::ovsdb::DatabaseAddress addressOf(std::string_view lines, std::string const & folder) {
    auto const document = text::readToml("remotes = [\"ssl:db\"]\n" + std::string(lines));
    return readDatabaseAddress(text::TomlField(document), folder);
}

} // namespace

TEST(AccessReader, RemotesAreKeptAsWritten) {
    EXPECT_EQ(remotesOf(R"(["unix:/run/db.sock", "tcp:db1:6641", "tcp:[::1]"])"),
              (std::vector<std::string>{"unix:/run/db.sock", "tcp:db1:6641", "tcp:[::1]"}));
}

TEST(AccessReader, ADatabaseHas1To16Remotes) {
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

TEST(AccessReader, AWrongRemoteIsRefusedAtItsPlace) {
    EXPECT_EQ(refusalOf(databaseAt("[\"tcp:db1\",\n  \"tcp:db2:0\"]")),
              "5:3: source[0].remotes[1]: found \"tcp:db2:0\", expected a PORT from 1 to 65535");
    EXPECT_EQ(refusalOf(databaseAt("[6640]")), "4:12: source[0].remotes[0]: found 6640, expected "
                                               "unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT");
}

TEST(AccessReader, AnSslRemoteHasItsFiles) {
    auto const ssl = addressOf(sslFiles, "/etc/vxshow/").ssl;
    ASSERT_TRUE(ssl);
    EXPECT_EQ(*ssl, (sources::ovsdb::DatabaseAddress::Ssl{"/k.pem", "/etc/vxshow/c.pem",
                                                          "/etc/vxshow/pki/ca.pem"}));
}

TEST(AccessReader, ARelativeFileNameCountsFromTheFolderOfTheFile) {
    TextFile const file(databaseAt("[\"ssl:db\"]", sslFiles));
    auto const folder = file.path().substr(0, file.path().rfind('/') + 1);
    auto const source = sourceOf(databaseAt("[\"tcp:db\", \"ssl:db\"]", sslFiles));
    EXPECT_EQ(std::get<sources::ovsdb::DatabaseAddress>(source.access).ssl->certificate,
              folder + "c.pem");
}

TEST(AccessReader, NoFileNameTurnsTheCheckOfTheServerOff) {
    auto const address = addressOf("private_key = \"k\"\ncertificate = \"c\"\n"
                                   "ca_certificate = \"none\"",
                                   "./");
    EXPECT_EQ(address.ssl->caCertificate, "./none");
}

TEST(AccessReader, AnSslRemoteNeedsAllThreeFiles) {
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

TEST(AccessReader, WithoutAnSslRemoteThereAreNoFiles) {
    for (std::string const key : {"private_key", "certificate", "ca_certificate"}) {
        EXPECT_EQ(refusalOf(database(key + " = \"x\"")),
                  "5:" + std::to_string(key.size() + 4) + ": source[0]." + key +
                      ": found \"x\", expected no such key, since no remote is ssl:");
    }
}

TEST(AccessReader, AFileNameIsNotEmpty) {
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

TEST(AccessReader, TheCommandIsVtyshUnlessItIsGiven) {
    EXPECT_EQ(commandOf("").words, std::vector<std::string>{"vtysh"});
    EXPECT_EQ(commandOf(R"(command = ["docker", "exec", "a b", "vtysh"])").words,
              (std::vector<std::string>{"docker", "exec", "a b", "vtysh"}));
}

TEST(AccessReader, ACommandIsOneOrMoreWords) {
    EXPECT_EQ(refusalOf(frr("command = []")), "4:11: source[0].command: found an empty array, "
                                              "expected an array of the words of a command");
    EXPECT_EQ(refusalOf(frr("command = \"vtysh\"")),
              "4:11: source[0].command: found \"vtysh\", expected an array of the words of a "
              "command");
    constexpr auto expected = ", expected a text that is not empty and without U+0000";
    EXPECT_EQ(refusalOf(frr("command = [\"ssh\", \"\"]")),
              std::string("4:19: source[0].command[1]: found \"\"") + expected);
    EXPECT_EQ(refusalOf(frr("command = [7]")),
              std::string("4:12: source[0].command[0]: found 7") + expected);
    EXPECT_EQ(refusalOf(frr("command = [\"a\\u0000b\"]")),
              std::string("4:12: source[0].command[0]: found \"a\\x00b\"") + expected);
}

TEST(AccessReader, ThePathSpaceIsAWord) {
    EXPECT_EQ(commandOf("").pathSpace, "");
    EXPECT_EQ(commandOf("path_space = \"Leaf_1-a\"").pathSpace, "Leaf_1-a");
    for (auto const * const bad : {"", "-a", "a/b", "a b", "a.b", "..", "a;b"}) {
        EXPECT_EQ(refusalOf(frr("path_space = \"" + std::string(bad) + '"')),
                  "4:14: source[0].path_space: found \"" + std::string(bad) +
                      "\", expected a path space: letters, digits, \"_\" and \"-\", which is not "
                      "first");
    }
    EXPECT_EQ(refusalOf(frr("path_space = 1")),
              "4:14: source[0].path_space: found 1, expected a path space: letters, digits, "
              "\"_\" and \"-\", which is not first");
}

TEST(AccessReader, ThereIsARemoteShellWhereSshIsRun) {
    EXPECT_FALSE(commandOf("").remoteShell);
    EXPECT_TRUE(commandOf(R"(command = ["ssh", "leaf1", "vtysh"])").remoteShell);
    EXPECT_TRUE(commandOf(R"(command = ["nice", "/usr/bin/ssh", "leaf1", "vtysh"])").remoteShell);
    EXPECT_FALSE(commandOf(R"(command = ["sshx", "myssh", "ssh/x", "SSH"])").remoteShell);
}

TEST(AccessReader, WhetherThereIsARemoteShellCanBeTold) {
    EXPECT_FALSE(commandOf("command = [\"ssh\", \"x\"]\nremote_shell = false").remoteShell);
    EXPECT_TRUE(commandOf("remote_shell = true").remoteShell);
    EXPECT_EQ(refusalOf(frr("remote_shell = \"yes\"")),
              "4:16: source[0].remote_shell: found \"yes\", expected true or false");
    EXPECT_EQ(refusalOf(frr("remote_shell = 1")),
              "4:16: source[0].remote_shell: found 1, expected true or false");
}

} // namespace vxshow::test
