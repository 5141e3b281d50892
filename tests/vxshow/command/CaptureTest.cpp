#include "tests/vxshow/Answers.h"
#include "tests/vxshow/Process.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include <linux/capability.h>

using namespace std::chrono_literals;

namespace {

/// A folder that lives as long as the object, with all that is in it.
class Folder {
public:
    Folder() {
        path_ = std::filesystem::temp_directory_path() / "vxshow-capture-XXXXXX";
        EXPECT_TRUE(mkdtemp(path_.data()));
    }

    Folder(Folder const &) = delete;
    Folder & operator=(Folder const &) = delete;

    ~Folder() { std::filesystem::remove_all(path_); }

    std::string file(std::string const & name) const { return path_ + "/" + name; }

    std::string const & path() const { return path_; }

    /// The names of all that is in it, hidden or not.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (auto const & entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

private:
    std::string path_;
};

using Names = std::vector<std::string>;

std::string contentOf(std::string const & path) {
    std::ifstream const file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void write(std::string const & path, std::string const & text) {
    std::ofstream(path) << text;
}

mode_t modeOf(std::string const & path) {
    struct stat status {};

    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

std::string captured(std::string const & snapshot) {
    return answer(snapshot, {"capture", "-"});
}

/// Waits until the process has a file of `folder` open, with a name or without.
bool opened(pid_t pid, std::string const & folder) {
    auto const deadline = std::chrono::steady_clock::now() + 30s;
    while (std::chrono::steady_clock::now() < deadline) {
        std::error_code gone; // a descriptor may be closed meanwhile
        std::filesystem::directory_iterator const all("/proc/" + std::to_string(pid) + "/fd", gone);
        for (auto const & descriptor : all) {
            if (std::filesystem::read_symlink(descriptor, gone).string().starts_with(folder)) {
                return true;
            }
        }
    }
    return false;
}

void expectOneLine(Finished const & finished, std::string const & line) {
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "vxshow: capture: " + line + "\n");
}

/// Permissions hold for everybody but the superuser, who is to be like everybody here.
void obeyPermissions() {
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
}

} // namespace

TEST(Capture, HasEverythingThatIsMountedInTheOrderOfItsKeys) {
    EXPECT_EQ(captured(R"({"routers": {
"status": {"prod": {
  "routes": {"::/0": [], "10.0.0.0/8": ["2001:db8::2", "10.9.0.0"]},
  "uplinks": {"10.9.0.1/31": {"mac": "0200.0000.000B", "vtep": "2001:db8:0::1",
    "ports": [{"port": "Ethernet1", "vlan": 1}, {"vlan": 0, "port": "Ethernet1"}]}},
  "ports": {"2001:db8::3/64": {"vni": 11, "mac": "02:00:00:00:00:0b"},
    "10.1.2.3/24": {"vni": 10, "mac": "02:00:00:00:00:0b", "vtep": "10.0.0.1"}}},
  "idle": {}},
"published": {"02-00-00-00-00-0A": {"path/prod": "Vxlan", "path": "other"},
  "02:00:00:00:00:09": {}},
"vteps": {"2001:db8::1": {"active": false},
  "10.0.0.1": {"active": true, "switches": ["leaf2", "02:00:00:00:00:0a"]}},
"switches": {"leaf2": {}, "02:00:00:00:00:0a": {"vteps": ["2001:db8::1", "10.0.0.1"]}}},
"advertised": {
"evpn": {"EVPN": {"flood": {}, "hosts": {}}},
"sources": {"HSC": {"16777215": {}}},
"vnis": {"abc": {}, "1\u0030": {"arp": {"2001:db8::9": {"mac": "0200.0000.0001"},
  "10.0.0.9": {"mac": "0200.0000.0002", "preference": 255, "changes": 4294967295}}},
  "": {"arp": {}}}},
"received": {
"evpn": {"EVPN": {"flood": {"10": ["10.0.0.9", "10.0.0.10"], "9": []},
  "hosts": {"10": {"02:00:00:00:00:03": {"vtep": "10.0.0.3"}}}}},
"sources": {"QVX": {"7": {"unicast": {}}}, "HSC": {}},
"switches": {"leaf10": {}, "leaf1": {"100": {}, "20": {
  "flood": {"00:00:00:00:00:00": ["10.0.0.2", "10.0.0.1"]},
  "multipath": {"0200.0000.0002": ["10.0.0.2", "10.0.0.1"], "0200.0000.0001": []},
  "unicast": {"0200.0000.0005": {"vtep": "10.0.0.1", "moves": 4294967295},
    "0200.0000.0004": {"vtep": "10.0.0.1", "moves": 0}}}}}},
"version": 1, "format": "vxlan-controller-state"})"),
              R"({"format":"vxlan-controller-state","version":1,)"
              R"("received":{"switches":{"leaf1":{"20":{)"
              R"("unicast":{"02:00:00:00:00:04":{"vtep":"10.0.0.1"},)"
              R"("02:00:00:00:00:05":{"vtep":"10.0.0.1","moves":4294967295}},)"
              R"("multipath":{"02:00:00:00:00:01":[],"02:00:00:00:00:02":["10.0.0.1","10.0.0.2"]},)"
              R"("flood":{"00:00:00:00:00:00":["10.0.0.1","10.0.0.2"]}},"100":{}},"leaf10":{}},)"
              R"("sources":{"HSC":{},"QVX":{"7":{}}},)"
              R"("evpn":{"EVPN":{"hosts":{"10":{"02:00:00:00:00:03":{"vtep":"10.0.0.3"}}},)"
              R"("flood":{"10":["10.0.0.9","10.0.0.10"]}}}},)"
              R"("advertised":{"vnis":{"":{},"10":{"arp":{)"
              R"("10.0.0.9":{"mac":"02:00:00:00:00:02","preference":255,"changes":4294967295},)"
              R"("2001:db8::9":{"mac":"02:00:00:00:00:01"}}},"abc":{}},)"
              R"("sources":{"HSC":{"16777215":{}}},"evpn":{"EVPN":{"hosts":{},"flood":{}}}},)"
              R"("routers":{"switches":{"02:00:00:00:00:0a":{"vteps":["10.0.0.1","2001:db8::1"]},)"
              R"("leaf2":{"vteps":[]}},)"
              R"("vteps":{"10.0.0.1":{"active":true,"switches":["02:00:00:00:00:0a","leaf2"]},)"
              R"("2001:db8::1":{"active":false}},)"
              R"("published":{"02:00:00:00:00:09":{},)"
              R"("02:00:00:00:00:0a":{"path":"other","path/prod":"Vxlan"}},)"
              R"("status":{"idle":{},"prod":{)"
              R"("ports":{"10.1.2.3/24":{"vni":10,"mac":"02:00:00:00:00:0b","vtep":"10.0.0.1"},)"
              R"("2001:db8::3/64":{"vni":11,"mac":"02:00:00:00:00:0b"}},)"
              R"("uplinks":{"10.9.0.1/31":{"mac":"02:00:00:00:00:0b","vtep":"2001:db8::1",)"
              R"("ports":[{"port":"Ethernet1"},{"port":"Ethernet1","vlan":1}]}},)"
              R"("routes":{"10.0.0.0/8":["10.9.0.0","2001:db8::2"],"::/0":[]}}}}})"
              "\n");
}

TEST(Capture, WhatIsAbsentStaysAbsentAndWhatIsEmptyEmpty) {
    EXPECT_EQ(captured(R"({"format":"vxlan-controller-state","version":1})"),
              "{\"format\":\"vxlan-controller-state\",\"version\":1}\n");
    for (char const * state :
         {R"("received":{"switches":{}})", R"("received":{"sources":{}})",
          R"("received":{"evpn":{}})", R"("received":{"evpn":{"EVPN":{}}})",
          R"("received":{"evpn":{"EVPN":{"flood":{}}}})", R"("advertised":{"vnis":{}})",
          R"("advertised":{"sources":{}})", R"("advertised":{"evpn":{}})",
          R"("routers":{"published":{}})", R"("routers":{"status":{}})",
          R"("routers":{"switches":{},"vteps":{}})"}) {
        auto const document =
            std::string(R"({"format":"vxlan-controller-state","version":1,)") + state + "}\n";
        EXPECT_EQ(captured(document), document);
    }
}

TEST(Capture, NamesAreEscapedWhereJsonDemandsIt) {
    auto const document =
        snapshotWith("received", R"({"switches":{"\u0000\u001f\n\"\\/é\ud83d\ude00\u007f":{}}})");
    auto const once = captured(document);
    EXPECT_NE(once.find("\\u0000\\u001f\\n\\\"\\\\/é😀\x7f"), std::string::npos) << once;
    EXPECT_EQ(captured(once), once);
}

TEST(Capture, PrettyIsTheSameIndented) {
    EXPECT_EQ(answer(snapshotWith("received", R"({"switches":{"leaf1":{"10":{}}}})"),
                     {"--pretty", "capture", "-"}),
              R"({
  "format": "vxlan-controller-state",
  "version": 1,
  "received": {
    "switches": {
      "leaf1": {
        "10": {}
      }
    }
  }
}
)");
}

TEST(Capture, OptionsOfListingsChangeNothing) {
    auto const plain = captured(exampleFabric());
    EXPECT_EQ(answer(exampleFabric(), {"--json", "--dotted", "--revision", "1", "capture", "-"}),
              plain);
}

TEST(Capture, AFileIsMadeWithoutAWordAndAsTheMaskLeavesIt) {
    Folder const folder;
    TemporaryFile const state(smallSnapshot());
    auto const finished = vxshow({"--state", state.path(), "capture", folder.file("new.json")},
                                 {.inChild = [] { umask(027); }});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out + finished.err, "");
    EXPECT_EQ(contentOf(folder.file("new.json")), captured(smallSnapshot()));
    EXPECT_EQ(modeOf(folder.file("new.json")), 0640U);
    EXPECT_EQ(folder.names(), Names{"new.json"});
}

TEST(Capture, AFileIsReplacedAndKeepsItsPermissions) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, std::string(100'000, 'x'));
    chmod(path.c_str(), 0604);
    answer(smallSnapshot(), {"capture", path});
    EXPECT_EQ(contentOf(path), captured(smallSnapshot()));
    EXPECT_EQ(modeOf(path), 0604U);
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(Capture, TheSnapshotThatIsReadMayBeReplaced) {
    TemporaryFile const state(exampleFabric());
    auto const expected = captured(exampleFabric());
    EXPECT_EQ(vxshow({"--state", state.path(), "capture", state.path()}).status, 0);
    EXPECT_EQ(contentOf(state.path()), expected);
}

TEST(Capture, AFullDeviceIsOneLineAndStaysADevice) {
    TemporaryFile const state(smallSnapshot());
    expectOneLine(vxshow({"--state", state.path(), "capture", "/dev/full"}),
                  "/dev/full: No space left on device");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(Capture, AFolderThatIsNotThereIsOneLine) {
    TemporaryFile const state(smallSnapshot());
    expectOneLine(vxshow({"--state", state.path(), "capture", "/nonexistent/x.json"}),
                  "/nonexistent/x.json: No such file or directory");
}

TEST(Capture, AFolderIsNoFile) {
    Folder const folder;
    TemporaryFile const state(smallSnapshot());
    expectOneLine(vxshow({"--state", state.path(), "capture", folder.path()}),
                  folder.path() + ": Is a directory");
    EXPECT_EQ(folder.names(), Names{});
}

TEST(Capture, AWriteThatFailsKeepsTheOldFile) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, "old");
    TemporaryFile const state(largeSnapshot(20'000));
    auto const limited = [] {
        rlimit const limit{100'000, 100'000};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    expectOneLine(vxshow({"--state", state.path(), "capture", path}, {.inChild = limited}),
                  path + ": File too large");
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(Capture, AReadOnlyFolderKeepsTheOldFile) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, "old");
    chmod(folder.path().c_str(), 0555);
    TemporaryFile const state(smallSnapshot());
    expectOneLine(vxshow({"--state", state.path(), "capture", path}, {.inChild = obeyPermissions}),
                  path + ": Permission denied");
    chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(Capture, AReadOnlyFileIsKept) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, "old");
    chmod(path.c_str(), 0444);
    TemporaryFile const state(smallSnapshot());
    expectOneLine(vxshow({"--state", state.path(), "capture", path}, {.inChild = obeyPermissions}),
                  path + ": Permission denied");
    EXPECT_EQ(contentOf(path), "old");
}

TEST(Capture, AnUnreadableStateKeepsTheOldFile) {
    Folder const folder;
    auto const path = folder.file("old.json");
    write(path, "old");
    EXPECT_EQ(failure("{", {"capture", path}).find("capture"), std::string::npos);
    EXPECT_EQ(contentOf(path), "old");
}

TEST(Capture, AnInterruptKeepsTheOldFile) {
    Folder const folder;
    TemporaryFile const state(largeSnapshot(1'000'000));
    auto const path = folder.file("old.json");
    write(path, "old");
    Process process({"--state", state.path(), "capture", path});
    ASSERT_TRUE(opened(process.pid(), folder.path()));
    kill(process.pid(), SIGINT);
    auto const finished = process.finish();
    EXPECT_EQ(finished.status, 130);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(folder.names(), Names{"old.json"});
}

TEST(Capture, AKilledCaptureLeavesNothingBehind) {
    Folder const folder;
    TemporaryFile const state(largeSnapshot(1'000'000));
    Process process({"--state", state.path(), "capture", folder.file("new.json")});
    ASSERT_TRUE(opened(process.pid(), folder.path()));
    kill(process.pid(), SIGKILL);
    EXPECT_EQ(process.finish().signal, SIGKILL);
    EXPECT_EQ(folder.names(), Names{});
}

TEST(Capture, AnInterruptOnAPipeThatNobodyOpensIsStatus130) {
    Folder const folder;
    auto const pipe = folder.file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    TemporaryFile const state(smallSnapshot());
    Process process({"--state", state.path(), "capture", pipe});
    std::this_thread::sleep_for(500ms);
    kill(process.pid(), SIGINT);
    EXPECT_EQ(process.finish().status, 130);
}

TEST(Capture, AnInterruptOnStandardOutputIsStatus130) {
    TemporaryFile const state(largeSnapshot(200'000));
    Process process({"--state", state.path(), "capture", "-"});
    process.readSome(1000);
    kill(process.pid(), SIGINT);
    auto const finished = process.finish();
    EXPECT_EQ(finished.status, 130);
    EXPECT_EQ(finished.err, "");
}

TEST(Capture, AClosedPipeEndsItSilently) {
    TemporaryFile const state(largeSnapshot(50'000));
    Process process({"--state", state.path(), "capture", "-"});
    process.readSome(100);
    process.closeReader();
    auto const finished = process.finish();
    EXPECT_EQ(finished.signal, SIGPIPE);
    EXPECT_EQ(finished.err, "");
}

TEST(Capture, NeedsAFile) {
    EXPECT_EQ(refused({"capture"}), "FILE is required");
    EXPECT_EQ(refused({"capture", ""}), "FILE: '': expected the name of a file");
    EXPECT_EQ(refused({"capture", "-", "x"}),
              "'x': not understood; 'vxshow capture --help' lists what is");
}

TEST(Capture, KnowsNoFilters) {
    Asked({"capture", "-"}, smallSnapshot())
        .knowsNone({"--vni", "--mac", "--source", "--vtep", "--router"});
}
