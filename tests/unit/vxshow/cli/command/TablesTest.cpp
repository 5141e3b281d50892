#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Folder.h"
#include "tests/unit/vxshow/Process.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>

namespace {

using Words = std::vector<std::string>;

constexpr std::size_t headerSize = 192;

/// Publishes the EVPN tables of a state in a folder.
class Published {
public:
    explicit Published(std::string const & snapshot) { publish(snapshot); }

    void publish(std::string const & snapshot) {
        EXPECT_EQ(answer(snapshot, {"tables", "publish", directory()}), "");
    }

    std::string directory() const { return folder_.file("tables"); }

    std::string file(std::string const & name) const { return directory() + "/" + name; }

    Words names() const {
        Words names;
        for (auto const & entry : std::filesystem::directory_iterator(directory())) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    /// What a command prints on the published tables, in a process of its own.
    std::string listing(Words arguments) const {
        Finished const finished = run(std::move(arguments));
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.err, "");
        return finished.out;
    }

    /// The line on a file that is refused; what follows its path.
    std::string refusalOf(std::string const & name, Words arguments = {"mac", "received"}) const {
        Finished const finished = run(std::move(arguments));
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.out, "");
        std::string const start = "vxshow: " + file(name) + ": ";
        EXPECT_EQ(finished.err.substr(0, start.size()), start);
        EXPECT_EQ(std::count(finished.err.begin(), finished.err.end(), '\n'), 1);
        return finished.err.substr(std::min(start.size(), finished.err.size()));
    }

private:
    Finished run(Words arguments) const {
        arguments.insert(arguments.begin(), {"--tables", directory()});
        return runVxshow(arguments, {.stateFile = "/nonexistent"});
    }

    Folder folder_;
};

/// Expects that every form of both commands is the same on the tables as on the snapshot.
void expectTheSameListings(std::string const & snapshot) {
    Published const tables(snapshot);
    for (Words const & words : {Words{"mac", "received", "--source", "evpn"},
                                {"mac", "advertised", "--dest", "evpn"},
                                {"mac", "received", "--source", "evpn", "--vni", "10"},
                                {"mac", "received", "--source", "evpn", "--json"},
                                {"mac", "advertised", "--dest", "evpn", "--json"}}) {
        std::string const expected = answer(snapshot, words);
        EXPECT_TRUE(tables.listing(words) == expected) << testing::PrintToString(words);
    }
}

std::string evpn(std::string const & received, std::string const & advertised) {
    return R"({"format":"vxlan-controller-state","version":1,"received":{"evpn":{"EVPN":)" +
           received + R"(}},"advertised":{"evpn":{"EVPN":)" + advertised + "}}}";
}

std::string smallTables() {
    return evpn(R"({"hosts": {"10": {"02:00:00:00:00:01": {"vtep": "10.0.0.1", "moves": 3}}},
                    "flood": {"10": ["10.0.0.1", "10.0.0.2"]}})",
                R"({"hosts": {"20": {"02:00:00:00:00:02": {"vtep": "10.0.0.3"}}}, "flood": {}})");
}

std::string withHosts(unsigned count) {
    std::string hosts;
    for (unsigned i = 0; i < count; ++i) {
        char entry[64];
        std::snprintf(entry, sizeof(entry), "\"02:00:00:%02x:%02x:%02x\":{\"vtep\":\"10.0.%u.%u\"}",
                      i >> 16, i >> 8 & 0xFF, i & 0xFF, i >> 8 & 0xFF, i & 0xFF);
        hosts.append(hosts.empty() ? "" : ",").append(entry);
    }
    return evpn(R"({"hosts":{"10":{)" + hosts + "}}}", "{}");
}

void changeByte(std::string const & path, std::size_t place) {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekg(static_cast<std::streamoff>(place));
    char const was = static_cast<char>(file.get());
    file.seekp(static_cast<std::streamoff>(place));
    file.put(static_cast<char>(was ^ 1));
    EXPECT_TRUE(file.flush());
}

void replaceBy(std::string const & path, std::string const & text) {
    EXPECT_TRUE(std::ofstream(path) << text);
}

} // namespace

TEST(Tables, AnotherProcessListsTheSame) {
    expectTheSameListings(exampleFabric());
    expectTheSameListings(smallTables());
}

TEST(Tables, AnotherProcessListsTheSameOfAHundredThousandHosts) {
    std::string const snapshot = withHosts(100000);
    expectTheSameListings(snapshot);
    EXPECT_NE(Published(snapshot).listing({"mac", "received"}).find("criterion: 100000\n"),
              std::string::npos);
}

TEST(Tables, AnotherProcessListsTheSameOfEmptyTables) {
    std::string const empty = R"({"hosts": {}, "flood": {}})";
    expectTheSameListings(evpn(empty, empty));
    EXPECT_EQ(Published(evpn(empty, empty)).names(),
              (Words{"advertised-flood", "advertised-hosts", "received-flood", "received-hosts"}));
}

TEST(Tables, AnAbsentTableHasNoFileAndAStaleOneIsRemoved) {
    Published tables(smallTables());
    EXPECT_EQ(tables.names(),
              (Words{"advertised-flood", "advertised-hosts", "received-flood", "received-hosts"}));
    std::string const some = evpn(R"({"hosts": {}})", R"({"flood": {"7": ["10.0.0.9"]}})");
    tables.publish(some);
    EXPECT_EQ(tables.names(), (Words{"advertised-flood", "received-hosts"}));
    EXPECT_EQ(tables.listing({"mac", "advertised", "--dest", "evpn"}),
              answer(some, {"mac", "advertised", "--dest", "evpn"}));
    tables.publish(R"({"format":"vxlan-controller-state","version":1})");
    EXPECT_EQ(tables.names(), Words{});
}

TEST(Tables, AFileOfAnotherNameIsLeftAlone) {
    Published tables(smallTables());
    replaceBy(tables.file("notes"), "mine");
    tables.publish(smallTables());
    EXPECT_EQ(tables.names(), (Words{"advertised-flood", "advertised-hosts", "notes",
                                     "received-flood", "received-hosts"}));
}

TEST(Tables, NothingButEvpnIsMounted) {
    Published const tables(exampleFabric());
    EXPECT_EQ(tables.listing({"mac", "received"}),
              answer(exampleFabric(), {"mac", "received", "--source", "evpn"}));
    EXPECT_EQ(tables.listing({"router", "routes", "--json"}),
              answer(R"({"format":"vxlan-controller-state","version":1})",
                     {"router", "routes", "--json"}));
}

TEST(Tables, AreAStateForEveryCommand) {
    Published const tables(smallTables());
    EXPECT_EQ(tables.listing({"mac", "received", "--json"}),
              answer(smallTables(), {"mac", "received", "--json"}));
    EXPECT_EQ(tables.listing({"model", "--of", "mac received"}),
              answer(smallTables(), {"model", "--of", "mac received"}));
}

TEST(Tables, ACaptureSaysWhereItComesFrom) {
    Published const tables(smallTables());
    auto const captured = tables.listing({"capture", "-"});
    auto const origin = captured.find(",\"origin\":{\"made\":\"");
    ASSERT_NE(origin, std::string::npos);
    EXPECT_EQ(captured.substr(0, origin) + "}\n", answer(smallTables(), {"capture", "-"}));
    EXPECT_NE(captured.find("\"kind\":\"tables\",\"role\":\"evpn\"", origin), std::string::npos);
    EXPECT_NE(captured.find("\"counts\":{\"vnis\":1,\"localMacs\":1,\"remoteMacs\":1,\"floods\":2}",
                            origin),
              std::string::npos)
        << captured;
}

TEST(Tables, APublishedDirectoryIsPublishedAgain) {
    Published const tables(exampleFabric());
    Folder const folder;
    EXPECT_EQ(tables.listing({"tables", "publish", folder.path()}), "");
    Finished const again =
        runVxshow({"--tables", folder.path(), "mac", "received", "--source", "evpn"});
    EXPECT_EQ(again.out, answer(exampleFabric(), {"mac", "received", "--source", "evpn"}));
}

TEST(Tables, ADamagedEntryIsRefusedWholeWhateverIsAsked) {
    Published const tables(smallTables());
    changeByte(tables.file("received-hosts"), headerSize + 8);
    std::string const line = tables.refusalOf("received-hosts");
    EXPECT_EQ(line.substr(0, 17), "slot 0: checksum ") << line;
    tables.refusalOf("received-hosts", {"mac", "received", "--vni", "99"});
    tables.refusalOf("received-hosts", {"arp", "received"});
}

TEST(Tables, ADamagedHeaderIsRefused) {
    Published const tables(smallTables());
    changeByte(tables.file("advertised-flood"), 20);
    std::string const line = tables.refusalOf("advertised-flood");
    EXPECT_EQ(line.substr(0, 17), "header: checksum ") << line;
}

TEST(Tables, AFileThatIsNotATableIsRefused) {
    Published const tables(smallTables());
    replaceBy(tables.file("received-flood"), "hosts");
    EXPECT_EQ(tables.refusalOf("received-flood"),
              "is no table: 5 bytes long, a header alone has 192\n");
    replaceBy(tables.file("received-flood"), std::string(1000, 'x'));
    EXPECT_EQ(tables.refusalOf("received-flood"),
              "is no table: starts with 0x7878787878787878, expected 0x6c6261546f6c6550\n");
    replaceBy(tables.file("received-flood"), "");
    EXPECT_EQ(tables.refusalOf("received-flood"),
              "is no table: 0 bytes long, a header alone has 192\n");
}

TEST(Tables, ATableOfAnotherKindIsRefused) {
    Published const tables(smallTables());
    std::filesystem::rename(tables.file("received-flood"), tables.file("received-hosts"));
    EXPECT_EQ(tables.refusalOf("received-hosts"),
              "holds 'VcsEvpn::FloodTable', expected 'VcsEvpn::HostTable'\n");
}

TEST(Tables, AFileThatWasCutShortIsRefused) {
    Published const tables(withHosts(1000));
    auto const size = std::filesystem::file_size(tables.file("received-hosts"));
    std::filesystem::resize_file(tables.file("received-hosts"), size - 1);
    EXPECT_EQ(tables.refusalOf("received-hosts"), "header: " + std::to_string(size - 1) +
                                                      " bytes for 1501 slots, expected " +
                                                      std::to_string(size) + "\n");
}

// The cut hits each run at another moment: before the file is opened, while it is copied, and
// later.
TEST(Tables, AFileThatIsCutMeanwhileIsShownOrRefusedButEndsNoProcess) {
    Published const tables(withHosts(20000));
    std::string const whole = tables.listing({"mac", "received"});
    std::string const path = tables.file("received-hosts");
    std::ifstream file(path, std::ios::binary);
    std::string const bytes((std::istreambuf_iterator<char>(file)), {});
    std::string const start = "vxshow: " + path + ": ";
    for (unsigned round = 0; round < 20; ++round) {
        replaceBy(path, bytes);
        Process process({"--tables", tables.directory(), "mac", "received"});
        std::this_thread::sleep_for(std::chrono::microseconds(500 * round));
        std::filesystem::resize_file(path, round % 2 == 0 ? 0 : bytes.size() / 2);
        auto const finished = process.finish();
        EXPECT_EQ(finished.signal, 0);
        if (finished.status == 0) {
            EXPECT_EQ(finished.err, "");
            EXPECT_TRUE(finished.out == whole);
        } else {
            EXPECT_EQ(finished.status, 1);
            EXPECT_EQ(finished.out, "");
            EXPECT_EQ(finished.err.substr(0, start.size()), start);
        }
    }
}

TEST(Tables, ADirectoryInPlaceOfAFileIsRefused) {
    Published const tables(smallTables());
    std::filesystem::remove(tables.file("received-hosts"));
    std::filesystem::create_directory(tables.file("received-hosts"));
    EXPECT_EQ(tables.refusalOf("received-hosts"), "is no regular file\n");
}

TEST(Tables, ADirectoryWithoutTablesIsRefused) {
    Folder const folder;
    Finished const empty = runVxshow({"--tables", folder.path(), "mac", "received"});
    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.out, "");
    EXPECT_EQ(empty.err, "vxshow: " + folder.path() +
                             ": holds no shared table; expected received-hosts, received-flood, "
                             "advertised-hosts or advertised-flood\n");
    Finished const missing = runVxshow({"--tables", folder.file("none"), "mac", "received"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "vxshow: " + folder.file("none") + ": No such file or directory\n");
    replaceBy(folder.file("file"), "x");
    Finished const file = runVxshow({"--tables", folder.file("file"), "mac", "received"});
    EXPECT_EQ(file.status, 1);
    EXPECT_EQ(file.err, "vxshow: " + folder.file("file") + "/received-hosts: Not a directory\n");
}

TEST(Tables, PublishingSaysWhyItCannot) {
    Folder const folder;
    replaceBy(folder.file("file"), "x");
    EXPECT_EQ(failure(smallTables(), {"tables", "publish", folder.file("file") + "/tables"}),
              "tables publish: " + folder.file("file") + "/tables: Not a directory");
    std::filesystem::create_directories(folder.file("received-hosts") + "/full");
    EXPECT_EQ(failure(smallTables(), {"tables", "publish", folder.path()}),
              "tables publish: " + folder.file("received-hosts") + ": Is a directory");
    EXPECT_EQ(folder.names().size(), 2U); // no temporary folder is left
}

TEST(Tables, TheOptionIsRefusedBesideAnotherState) {
    EXPECT_EQ(refused({"--tables", "d", "--state", "a", "mac", "received"}),
              "--state and --tables: expected one of them");
    EXPECT_EQ(refused({"--tables", "d", "--fabric", "a", "mac", "received"}),
              "--fabric and --tables: expected one of them");
    EXPECT_EQ(refused({"--tables", "d", "--ovsdb", "unix:/a", "mac", "received"}),
              "--ovsdb and --tables: expected one of them");
    EXPECT_EQ(refused({"--tables", "d", "--frr", "mac", "received"}),
              "--frr and --tables: expected one of them");
    EXPECT_EQ(refused({"--tables", "", "mac", "received"}),
              "--tables: '': expected the name of a directory");
}

TEST(Tables, TheCommandNeedsADirectory) {
    EXPECT_EQ(refused({"tables"}), "no command: expected publish after vxshow tables");
    EXPECT_EQ(refused({"tables", "publish"}), "DIR is required");
    EXPECT_EQ(refused({"tables", "publish", ""}), "DIR: '': expected the name of a directory");
    EXPECT_EQ(refused({"--watch", "1", "--state", "a", "tables", "publish", "d"}),
              "--watch: not available for tables publish");
}
