#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/Process.h"
#include "tests/unit/vxshow/TerminalProcess.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Words = std::vector<std::string>;

void write(std::string const & path, std::string const & text) {
    std::ofstream(path) << text;
}

/// The configuration files of a user and of a system, and what `vxshow` says with them.
class Config : public ::testing::Test {
protected:
    Config() { std::filesystem::create_directories(folder_.file("user/vxshow")); }

    void user(std::string const & text) const { write(userFile(), text); }

    void system(std::string const & text) const { write(systemFile(), text); }

    std::string userFile() const { return folder_.file("user/vxshow/config.toml"); }

    std::string systemFile() const { return folder_.file("system.toml"); }

    std::string file(std::string const & name) const { return folder_.file(name); }

    Finished run(Words const & words, std::function<void()> more = {}) const {
        return runVxshow(words, {.inChild = [this, more = std::move(more)] {
                             ::setenv("XDG_CONFIG_HOME", folder_.file("user").c_str(), 1);
                             ::setenv("VXSHOW_SYSTEM_CONFIG", systemFile().c_str(), 1);
                             if (more) {
                                 more();
                             }
                         }});
    }

    /// Expects success without a word on standard error; returns the output.
    std::string out(Words const & words, std::function<void()> more = {}) const {
        auto const finished = run(words, std::move(more));
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.err, "");
        return finished.out;
    }

    /// Expects one line on standard error, nothing else and this exit status; returns the line.
    std::string error(Words const & words, int status = 1) const {
        auto const finished = run(words);
        EXPECT_EQ(finished.status, status);
        EXPECT_EQ(finished.out, "");
        return finished.err;
    }

    std::string listing(Words words = {}) const {
        words.insert(words.begin(), {"--state", EXAMPLE_FABRIC, "mac", "received", "--vni", "20"});
        return out(words);
    }

private:
    Folder folder_;
};

constexpr char const * deadFabric = R"([[source]]
kind = "hardware_vtep"
name = "nobody"
remotes = ["unix:/nonexistent/db"]
)";

} // namespace

TEST_F(Config, WithoutAnyFileNothingChanges) {
    EXPECT_EQ(listing(), listing({"-o", "text"}));
}

TEST_F(Config, TheFormOfTheFileIsTheDefault) {
    auto const csv = listing({"-o", "csv"});
    system("form = \"csv\"\n");
    EXPECT_EQ(listing(), csv);
}

TEST_F(Config, TheUsersFileCountsMoreThanTheSystems) {
    auto const json = listing({"-o", "json"});
    user("form = \"json\"\n");
    system("form = \"csv\"\n");
    EXPECT_EQ(listing(), json);
}

TEST_F(Config, AnOptionCountsMoreThanTheFile) {
    auto const text = listing();
    auto const json = listing({"--json"});
    user("form = \"wide\"\n");
    EXPECT_EQ(listing({"-o", "text"}), text);
    EXPECT_EQ(listing({"--json"}), json);
}

TEST_F(Config, OptionsOfRowsFitAPreferredForm) {
    user("form = \"csv\"\n");
    EXPECT_EQ(listing({"--columns", "vni", "--top", "1"}), "vni\r\n20\r\n");
}

TEST_F(Config, ACommandWithoutRowsHasTheFormTextWherePreferredIsOneWithRows) {
    auto const text = out({"--state", EXAMPLE_FABRIC, "state"});
    user("form = \"wide\"\n");
    EXPECT_EQ(out({"--state", EXAMPLE_FABRIC, "state"}), text);
}

TEST_F(Config, WhatOneFileDoesNotSetComesFromTheOther) {
    auto const csv = listing({"-o", "csv"});
    user("color = \"never\"\n");
    system("form = \"csv\"\n");
    EXPECT_EQ(listing(), csv);
}

TEST_F(Config, AFabricIsShownByName) {
    user("[fabrics]\ndc1 = \"dc1.toml\"\n");
    write(file("user/vxshow/dc1.toml"), deadFabric);
    auto const expected = run({"--fabric", file("user/vxshow/dc1.toml"), "mac", "received"}).err;
    EXPECT_NE(expected.find("nobody: "), std::string::npos);
    for (Words const & words :
         {Words{"-F", "dc1", "mac", "received"}, Words{"mac", "received", "--fabric-name=dc1"}}) {
        EXPECT_EQ(error(words), expected);
    }
}

TEST_F(Config, AFabricsFileCountsFromTheFolderOfItsConfiguration) {
    user("[fabrics]\nhere = \"sub/x.toml\"\nabsolute = \"/nonexistent/y.toml\"\n");
    EXPECT_EQ(error({"-F", "here", "state"}),
              "vxshow: " + file("user/vxshow/sub/x.toml") + ": No such file or directory\n");
    EXPECT_EQ(error({"-F", "absolute", "state"}),
              "vxshow: /nonexistent/y.toml: No such file or directory\n");
}

TEST_F(Config, ANamedFabricCountsMoreThanAVariable) {
    user("[fabrics]\ndc1 = \"/nonexistent/y.toml\"\n");
    auto const finished =
        run({"-F", "dc1", "state"}, [] { ::setenv("VXSHOW_STATE", EXAMPLE_FABRIC, 1); });
    EXPECT_EQ(finished.err, "vxshow: /nonexistent/y.toml: No such file or directory\n");
}

TEST_F(Config, AnUnknownFabricIsAUsageErrorWithTheNames) {
    user("[fabrics]\ndc1 = \"a\"\nlab = \"b\"\n");
    EXPECT_EQ(error({"-F", "dc2", "state"}, 2),
              "vxshow: -F: no fabric is named 'dc2'; did you mean dc1? Configured: dc1, lab\n");
    EXPECT_EQ(error({"-F", "elsewhere", "state"}, 2),
              "vxshow: -F: no fabric is named 'elsewhere'; configured: dc1, lab\n");
    user("");
    EXPECT_EQ(error({"-F", "dc2", "state"}, 2),
              "vxshow: -F: no fabric is named 'dc2', and none is configured; [fabrics] in "
              "vxshow/config.toml names them\n");
}

TEST_F(Config, OfManyFabricsTheFirstAreNamed) {
    std::string text = "[fabrics]\n";
    for (int number = 10; number < 40; ++number) {
        text += "f" + std::to_string(number) + " = \"x\"\n";
    }
    user(text);
    auto const line = error({"-F", "elsewhere", "state"}, 2);
    EXPECT_NE(line.find("f10, f11"), std::string::npos) << line;
    EXPECT_NE(line.find(", f29, and 10 more\n"), std::string::npos) << line;
}

TEST_F(Config, ANameDoesNotFitBesideAnotherState) {
    user("[fabrics]\ndc1 = \"a\"\n");
    EXPECT_EQ(error({"-F", "dc1", "--frr", "state"}, 2),
              "vxshow: --frr and -F: expected one of them\n");
    EXPECT_EQ(error({"-F", "dc1", "--tables", "x", "state"}, 2),
              "vxshow: --tables and -F: expected one of them\n");
    EXPECT_EQ(error({"-F", "--frr", "state"}, 2), "vxshow: -F: no value; expected NAME\n");
}

TEST_F(Config, TheUsersFabricHidesTheSystemsOfTheSameName) {
    user("[fabrics]\ndc1 = \"/nonexistent/mine.toml\"\n");
    system("[fabrics]\ndc1 = \"/nonexistent/theirs.toml\"\n"
           "dc2 = { file = \"/nonexistent/two.toml\", description = \"The other one\" }\n");
    EXPECT_EQ(error({"-F", "dc1", "state"}),
              "vxshow: /nonexistent/mine.toml: No such file or directory\n");
    auto const json = out({"fabrics", "--json"});
    EXPECT_EQ(
        json,
        R"({"fabrics":[{"name":"dc1","file":"/nonexistent/mine.toml","definedIn":")" + userFile() +
            R"(","hidden":false},{"name":"dc1","file":"/nonexistent/theirs.toml","definedIn":")" +
            systemFile() +
            R"(","hidden":true},{"name":"dc2","file":"/nonexistent/two.toml","definedIn":")" +
            systemFile() +
            R"(","hidden":false,"description":"The other one"}],"configurations":[{"file":")" +
            userFile() + R"(","read":true},{"file":")" + systemFile() + R"(","read":true}]})" +
            "\n");
    auto const text = out({"fabrics"});
    EXPECT_NE(text.find("dc1     hidden  /nonexistent/theirs.toml"), std::string::npos) << text;
}

TEST_F(Config, FabricsSaysWhereItLooked) {
    EXPECT_EQ(out({"fabrics"}),
              userFile() + ": no such file\n" + systemFile() + ": no such file\n");
}

TEST_F(Config, UnknownKeysAndValuesAreRefusedWithTheirPlace) {
    struct Case {
        char const * text;
        char const * line;
    };

    for (Case const & one : {
             Case{"\ncolour = 1", ":2:1: found \"colour\", expected \"form\", \"color\", \"pager\" "
                                  "or \"fabrics\"; did you mean \"color\"?"},
             Case{"form = \"wid\"", ":1:8: form: found \"wid\", expected \"text\", \"json\", "
                                    "\"pretty\", \"wide\", \"csv\" or \"jsonl\"; did you mean "
                                    "\"wide\"?"},
             Case{"form = 1", ":1:8: form: found 1, expected \"text\", \"json\", \"pretty\", "
                              "\"wide\", \"csv\" or \"jsonl\""},
             Case{"color = true",
                  ":1:9: color: found true, expected \"auto\", \"always\" or \"never\""},
             Case{"pager = true",
                  ":1:9: pager: found true, expected a command, or false for no pager"},
             Case{"pager = 3", ":1:9: pager: found 3, expected a command, or false for no pager"},
             Case{"fabrics = 1", ":1:11: fabrics: found 1, expected a table of fabrics by name"},
             Case{"[fabrics]\na = 1", ":2:5: fabrics.a: found 1, expected the path of a fabric "
                                      "file, absolute or from this file's folder"},
             Case{"[fabrics]\na = \"~/x\"",
                  ":2:5: fabrics.a: found \"~/x\", expected the path of a fabric file, absolute or "
                  "from this file's folder"},
             Case{"[fabrics.a]\nfil = 1", ":2:1: fabrics.a: found \"fil\", expected \"file\" or "
                                          "\"description\"; did you mean \"file\"?"},
             Case{"[fabrics.a]\ndescription = \"x\"",
                  ":1:1: fabrics.a: found a table, expected \"file\" in it"},
             Case{"[fabrics]\n\"-a\" = \"x\"",
                  ":2:1: fabrics: found \"-a\", expected a name of 1 to 64 bytes without control "
                  "characters and without a dash in front"},
         }) {
        user(one.text);
        EXPECT_EQ(error({"fabrics"}), "vxshow: " + userFile() + one.line + "\n");
    }
    user("form = ");
    EXPECT_EQ(error({"fabrics"}).find("vxshow: " + userFile() + ":1:"), 0U);
}

TEST_F(Config, HelpVersionAndCompletionNeedNoValidFile) {
    user("form = 1\n");
    EXPECT_NE(out({"--help"}), "");
    EXPECT_NE(out({"mac", "received", "--help"}), "");
    EXPECT_NE(out({"help", "fabrics"}), "");
    EXPECT_NE(out({"-V"}), "");
    EXPECT_NE(out({"completion", "bash"}), "");
    EXPECT_NE(out({"complete", "zsh", "--", "mac", ""}), "");
    EXPECT_EQ(out({"complete", "zsh", "--", "-F", ""}), "");
}

TEST_F(Config, ARelativeFolderOfConfigurationsIsIgnored) {
    std::filesystem::create_directories(file("home/.config/vxshow"));
    write(file("home/.config/vxshow/config.toml"), "form = 1\n");
    for (char const * const relative : {"user", ""}) {
        auto const finished = run({"fabrics"}, [&] {
            ::setenv("XDG_CONFIG_HOME", relative, 1);
            ::setenv("HOME", file("home").c_str(), 1);
        });
        EXPECT_EQ(finished.err.find("vxshow: " + file("home/.config/vxshow/config.toml:1:8")), 0U)
            << finished.err;
    }
}

TEST_F(Config, WithoutAHomeThereIsNoFileOfTheUser) {
    EXPECT_EQ(out({"fabrics"},
                  [] {
                      ::unsetenv("XDG_CONFIG_HOME");
                      ::setenv("HOME", "relative", 1);
                  }),
              systemFile() + ": no such file\n");
}

TEST_F(Config, AFileThatEveryoneCanWriteToIsRefused) {
    user("");
    ASSERT_EQ(::chmod(userFile().c_str(), 0666), 0);
    EXPECT_EQ(error({"fabrics"}), "vxshow: " + userFile() +
                                      ": everyone can write to it; expected a file that only its "
                                      "owner can write to\n");
}

TEST_F(Config, AFileOfAnotherUserIsRefused) {
    user("");
    if (::chown(userFile().c_str(), 12345, static_cast<gid_t>(-1)) != 0) {
        GTEST_SKIP() << "only root can give a file away";
    }
    EXPECT_EQ(error({"fabrics"}),
              "vxshow: " + userFile() +
                  ": belongs to another user; expected your own file, or root's\n");
}

TEST_F(Config, WhatIsNoRegularFileIsRefusedWithoutWaiting) {
    ASSERT_EQ(::mkfifo(userFile().c_str(), 0600), 0);
    EXPECT_EQ(error({"fabrics"}), "vxshow: " + userFile() + ": expected a regular file\n");
}

TEST_F(Config, AFileThatIsTooLongIsRefused) {
    user(std::string((std::size_t{1} << 20) + 1, '#'));
    EXPECT_EQ(error({"fabrics"}).find("vxshow: " + userFile() + ": "), 0U);
}

TEST_F(Config, NamesOfFabricsAndFormsAreCompleted) {
    user("[fabrics]\ndc1 = \"a\"\n");
    system("[fabrics]\ndc1 = \"b\"\ndc2 = \"c\"\nlab = \"d\"\n");
    EXPECT_EQ(out({"complete", "zsh", "--", "-F", "dc"}), "words\ndc1\t\ndc2\t\n");
    EXPECT_EQ(out({"complete", "zsh", "--", "--fabric-name=l"}), "words\n--fabric-name=lab\t\n");
    EXPECT_EQ(out({"complete", "zsh", "--", "-o", "js"}), "words\njson\t\njsonl\t\n");
}

TEST_F(Config, ThePagerOfTheFileIsStartedUnlessAVariableOrOptionSaysOtherwise) {
    user("pager = \"sed s/leaf1/paged/\"\n");
    auto const shown = [&](Words more, std::string const & pager) {
        Words words{"--state", EXAMPLE_FABRIC, "mac", "received"};
        words.insert(words.end(), more.begin(), more.end());
        TerminalProcess terminal(
            words,
            {.lines = 5, .environment = {{"XDG_CONFIG_HOME", file("user")}, {"PAGER", pager}}});
        EXPECT_EQ(terminal.finish(), 0);
        return terminal.drawn();
    };
    EXPECT_NE(shown({}, "").find("paged "), std::string::npos);
    EXPECT_NE(shown({}, "sed s/leaf1/other/").find("other "), std::string::npos);
    EXPECT_EQ(shown({"--no-pager"}, "").find("paged "), std::string::npos);
    user("pager = false\n");
    EXPECT_NE(shown({}, "").find("leaf1 "), std::string::npos);
}

TEST_F(Config, TheColorOfTheFileCountsLessThanAVariableOrAnOption) {
    auto const isColored = [&](Words const & more, char const * noColor) {
        Words words{"--state", "/nonexistent", "state"};
        words.insert(words.end(), more.begin(), more.end());
        auto const finished = run(words, [&] { ::setenv("NO_COLOR", noColor, 1); });
        return finished.err.find('\x1b') != std::string::npos;
    };
    EXPECT_FALSE(isColored({}, ""));
    system("color = \"always\"\n");
    EXPECT_TRUE(isColored({}, ""));
    EXPECT_FALSE(isColored({}, "1"));
    EXPECT_FALSE(isColored({"--color", "never"}, ""));
    user("color = \"never\"\n");
    EXPECT_FALSE(isColored({}, ""));
    EXPECT_TRUE(isColored({"--color", "always"}, ""));
}
