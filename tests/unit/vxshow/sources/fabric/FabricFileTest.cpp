#include "vxshow/sources/fabric/FabricFile.h"

#include "tests/unit/vxshow/sources/fabric/Fabrics.h"
#include "tests/unit/vxshow/system/TextFile.h"
#include "vxshow/sources/frr/VtyshAccess.h"
#include "vxshow/sources/ovsdb/DatabaseAccess.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::fabric;
using sources::ovsdb::DatabaseAccess;

namespace {

std::string errorOf(std::string const & path) {
    try {
        readFabricFile(path);
    } catch (FabricFileError const & error) {
        return error.what();
    }
    return {};
}

/// That many sources, named by number.
std::string sources(int count) {
    std::string text;
    for (int number = 0; number < count; ++number) {
        text += "[[source]]\nkind = \"frr\"\nname = \"" + std::to_string(number) + "\"\n";
    }
    return text;
}

/// Makes a file the standard input for its lifetime.
class StandardInput {
public:
    explicit StandardInput(std::string_view text) : file_(text), before_(::dup(STDIN_FILENO)) {
        ::dup2(file_.descriptor(), STDIN_FILENO);
        ::lseek(STDIN_FILENO, 0, SEEK_SET);
    }

    StandardInput(StandardInput const &) = delete;
    StandardInput & operator=(StandardInput const &) = delete;

    ~StandardInput() {
        ::dup2(before_, STDIN_FILENO);
        ::close(before_);
    }

private:
    TextFile file_;
    int before_;
};

} // namespace

TEST(FabricFile, SourcesAreReadInOrder) {
    auto const read = fabricOf("[[source]]\n"
                               "kind = \"hardware_vtep\"\n"
                               "name = \"spine\"\n"
                               "role = \"hsc\"\n"
                               "time_limit = 2.5\n"
                               "remotes = [\"tcp:10.0.0.1:6640\"]\n"
                               "[source.system_ids]\n"
                               "leaf1 = \"02:00:00:00:00:01\"\n"
                               "\n"
                               "[[source]]\n"
                               "kind = \"frr\"\n"
                               "name = \"leaf7\"\n"
                               "system_id = \"0200.0000.0007\"\n"
                               "command = [\"ssh\", \"leaf7\", \"sudo\", \"vtysh\"]\n"
                               "path_space = \"blue\"\n");
    ASSERT_EQ(read.size(), 2U);
    auto const & spine = read[0];
    EXPECT_EQ(spine.name, "spine");
    EXPECT_EQ(spine.role, Role::hsc);
    EXPECT_EQ(spine.systemId, std::nullopt);
    EXPECT_EQ(spine.timeLimit, std::chrono::milliseconds(2500));
    auto const & database = accessOf<DatabaseAccess>(spine);
    EXPECT_EQ(database.address(), sources::ovsdb::DatabaseAddress{{"tcp:10.0.0.1:6640"}});
    EXPECT_EQ(database.systemIds(),
              (std::map<std::string, Nolt::EthAddr>{
                  {"leaf1", Nolt::EthAddr::fromString("02:00:00:00:00:01")}}));
    auto const & leaf = read[1];
    EXPECT_EQ(leaf.name, "leaf7");
    EXPECT_EQ(leaf.role, Role::switches);
    EXPECT_EQ(leaf.systemId, Nolt::EthAddr::fromString("02:00:00:00:00:07"));
    EXPECT_EQ(leaf.timeLimit, std::chrono::milliseconds(5000));
    EXPECT_EQ(accessOf<sources::frr::VtyshAccess>(leaf).command(),
              (sources::frr::VtyshCommand{{"ssh", "leaf7", "sudo", "vtysh"}, "blue", true}));
}

TEST(FabricFile, SourcesCanBeAnArray) {
    EXPECT_EQ(sourceOf("source = [{ kind = \"frr\", name = \"leaf1\" }]").name, "leaf1");
}

TEST(FabricFile, TheMostFactsOfASourceAreItsOwnThenThoseOfTheFileThenThoseOfTheCaller) {
    auto const own = "max_facts = 5\n";
    auto const ofFile = "max_facts = 7\n";
    EXPECT_EQ(sourceOf(ofFile + frr("")).maxFacts, 7U);
    EXPECT_EQ(sourceOf(ofFile + frr(own)).maxFacts, 5U);
    auto const fromCaller = [](std::string const & text) {
        return readFabricFile(TextFile(text).path(), 9).sources.at(0).maxFacts;
    };
    EXPECT_EQ(fromCaller(frr("")), 9U);
    EXPECT_EQ(fromCaller(frr(own)), 5U);
    EXPECT_EQ(fromCaller(ofFile + frr("")), 7U);
    EXPECT_EQ(refusalOf("max_facts = 0\n" + frr("")),
              "1:13: max_facts: found 0, expected a whole number from 1 to 4294967295");
}

TEST(FabricFile, CanLimitTheTimeOfTheWholeReading) {
    auto const fabric = readFabricFile(TextFile("time_limit = 2.5\n" + frr("")).path());
    EXPECT_EQ(fabric.timeLimit, std::chrono::milliseconds(2500));
    EXPECT_EQ(fabric.sources.at(0).timeLimit, std::chrono::seconds(5));
    EXPECT_FALSE(readFabricFile(TextFile(frr("")).path()).timeLimit);
    EXPECT_EQ(refusalOf("time_limit = 0\n" + frr("")),
              "1:14: time_limit: found 0, expected seconds: a number greater than 0 and at most "
              "3600");
}

TEST(FabricFile, CanComeFromStandardInput) {
    StandardInput const input(frr(""));
    EXPECT_EQ(readFabricFile("-").sources.at(0).name, "leaf1");
}

TEST(FabricFile, StandardInputIsNamedInItsErrors) {
    StandardInput const input(frr("role = 1"));
    EXPECT_EQ(errorOf("-"), "standard input:4:8: source[0].role: found 1, expected \"switch\", "
                            "\"hsc\", \"qvx\" or \"evpn\"");
}

TEST(FabricFile, FilesOfAFabricFromStandardInputCountFromTheCurrentFolder) {
    StandardInput const input(databaseAt("[\"ssl:db\"]", "private_key = \"k\"\n"
                                                         "certificate = \"pki/c\"\n"
                                                         "ca_certificate = \"/ca\"\n"));
    auto const source = readFabricFile("-").sources.at(0);
    EXPECT_EQ(accessOf<DatabaseAccess>(source).address().ssl,
              (sources::ovsdb::DatabaseAddress::Ssl{"./k", "./pki/c", "/ca"}));
}

TEST(FabricFile, AFileThatCannotBeReadIsReportedInTheWordsOfTheSystem) {
    EXPECT_EQ(errorOf("/nowhere/fabric.toml"), "/nowhere/fabric.toml: No such file or directory");
    EXPECT_EQ(errorOf("/"), "/: Is a directory");
    EXPECT_EQ(errorOf("/no\nwhere\x1B"), "/no\\x0awhere\\x1b: No such file or directory");
}

TEST(FabricFile, WithoutASourceIsRefused) {
    EXPECT_EQ(refusalOf(""), "1:1: found a table, expected \"source\" in it");
    EXPECT_EQ(refusalOf("# nothing\n"), "1:1: found a table, expected \"source\" in it");
    EXPECT_EQ(refusalOf("source = []"),
              "1:10: source: found an empty array, expected 1 to 4096 tables [[source]]");
}

TEST(FabricFile, ASingleTableIsNotAListOfSources) {
    EXPECT_EQ(refusalOf("[source]\nkind = \"frr\""),
              "1:1: source: found a table, expected 1 to 4096 tables [[source]]");
    EXPECT_EQ(refusalOf("source = [1]"), "1:11: source[0]: found 1, expected a table");
}

TEST(FabricFile, OtherKeysThanSourceAreRefused) {
    EXPECT_EQ(refusalOf("[[source]]\nkind = \"frr\"\nname = \"a\"\n[[sources]]\n"),
              "4:3: found \"sources\", expected \"time_limit\", \"max_facts\" or \"source\"");
    EXPECT_EQ(refusalOf("  role = \"hsc\"\n" + frr("")),
              "1:3: found \"role\", expected \"time_limit\", \"max_facts\" or \"source\"");
}

TEST(FabricFile, NamesAreUnique) {
    EXPECT_EQ(refusalOf(frr("") + frr("")),
              "6:8: source[1].name: found \"leaf1\", expected a name that no source before it has");
}

TEST(FabricFile, TwoSwitchesCannotHaveOneSystemIdentifier) {
    std::string const first = "[[source]]\nkind = \"frr\"\nname = \"leaf1\"\n"
                              "system_id = \"00:1c:73:00:00:07\"\n";
    EXPECT_EQ(refusalOf(first + "[[source]]\nkind = \"frr\"\nname = \"leaf2\"\n"
                                "system_id = \"001c.7300.0007\"\n"),
              "8:13: source[1].system_id: found \"001c.7300.0007\", expected a system identifier "
              "that no other switch has");
    std::string const database = "[[source]]\nkind = \"hardware_vtep\"\nname = \"rack\"\n"
                                 "remotes = [\"tcp:10.0.0.1:6640\"]\n[source.system_ids]\n"
                                 "leaf3 = \"00:1c:73:00:00:08\"\n";
    EXPECT_EQ(refusalOf(first + database + "leaf4 = \"00:1c:73:00:00:07\"\n"),
              "11:9: source[1].system_ids.leaf4: found \"00:1c:73:00:00:07\", expected a system "
              "identifier that no other switch has");
}

TEST(FabricFile, SeveralDatabasesCanHaveOneSwitch) {
    std::string const database = "remotes = [\"tcp:10.0.0.1:6640\"]\n[source.system_ids]\n"
                                 "leaf3 = \"00:1c:73:00:00:08\"\n";
    std::string const kind = "[[source]]\nkind = \"hardware_vtep\"\n";
    EXPECT_EQ(
        fabricOf(kind + "name = \"a\"\n" + database + kind + "name = \"b\"\n" + database).size(),
        2U);
}

TEST(FabricFile, HasAtMost4096Sources) {
    EXPECT_EQ(fabricOf(sources(4096)).size(), 4096U);
    EXPECT_EQ(refusalOf(sources(4097)),
              "1:1: source: found an array of 4097, expected 1 to 4096 tables [[source]]");
}

} // namespace vxshow::test
