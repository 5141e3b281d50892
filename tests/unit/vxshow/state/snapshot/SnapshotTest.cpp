#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

std::string errorFor(std::string const & path) {
    try {
        readSnapshot(path);
    } catch (SnapshotError const & error) {
        return error.what();
    }
    return "accepted";
}

std::string const everything =
    R"({"format":"vxlan-controller-state","version":1,"received":{
  "switches": { "leaf1": { "10": {
      "unicast": { "02:00:00:00:00:01": { "vtep": "10.0.0.1", "moves": 12 } },
      "multipath": { "0200.0000.0002": [ "10.0.0.1", "10.0.0.2" ] },
      "flood": { "00-00-00-00-00-00": [ "10.0.0.3" ] },
      "arp": { "2001:db8::1": { "mac": "02:00:00:00:00:01", "preference": 1, "changes": 2 } } } },
    "na\u00efve \u2603 \"": {} , "Bl\u00e4tter ☃": {} },
  "sources": { "HSC": { "16777215": {} }, "QVX": {} },
  "evpn": { "EVPN": { "hosts": { "10": { "02:00:00:00:00:09": { "vtep": "10.0.0.9" } } },
                      "flood": { "10": [ "10.0.0.8" ] } } } },"advertised":{
  "vnis": { "10": {
      "unicast": { "02:00:00:00:00:01": { "vtep": "10.0.0.1", "moves": 12 } },
      "multipath": { "0200.0000.0002": [ "10.0.0.1", "10.0.0.2" ] },
      "flood": { "00-00-00-00-00-00": [ "10.0.0.3" ] },
      "arp": { "192.0.2.1": { "mac": "02:00:00:00:00:01" } } },
    "\u2603 %s": {} , "☃": {}, "": {} },
  "sources": { "HSC": { "0": {} } },
  "evpn": { "EVPN": { "hosts": { "11": {} }, "flood": { "11": [ "10.0.0.8" ] } } } },"routers":{
  "switches": { "00:1c:73:00:00:01": { "vteps": [ "10.0.0.1", "2001:db8::1" ] }, "\u2603": {} },
  "vteps": { "10.0.0.1": { "active": true, "switches": [ "00:1c:73:00:00:01", "\u2603" ] },
             "2001:db8::1": { "active": false } },
  "published": { "00:1c:73:00:00:01": { "vxlancontroller/\u2603": "Vxlan", "": "" } },
  "status": { "%s \u2603": {
      "ports": { "10.1.0.1/24": { "vni": 10, "mac": "02:00:00:00:00:01", "vtep": "10.0.0.1" } },
      "uplinks": { "::1/64": { "mac": "02:00:00:00:00:01", "vtep": "2001:db8::1",
                               "ports": [ { "port": "\"1\"", "vlan": 7 }, { "port": "" } ] } },
      "routes": { "10.0.0.0/8": [ "10.0.0.1", "2001:db8::1" ], "::/0": [] } } } }})";

/// Standard input reads from a file for as long as this lives.
class StandardInput {
public:
    explicit StandardInput(int descriptor) : saved_(::dup(STDIN_FILENO)) {
        ::dup2(descriptor, STDIN_FILENO);
    }

    StandardInput(StandardInput const &) = delete;
    StandardInput & operator=(StandardInput const &) = delete;

    ~StandardInput() {
        ::dup2(saved_, STDIN_FILENO);
        ::close(saved_);
    }

private:
    int saved_;
};

TEST(Snapshot, IsReadFromAFile) {
    auto const path = std::filesystem::temp_directory_path() /
                      ("snapshot-" + std::to_string(::getpid()) + ".json");
    std::ofstream(path) << everything;
    auto const mount = readSnapshot(path.string());
    std::filesystem::remove(path);
    EXPECT_EQ(mount.received.switches->size(), 3);
}

TEST(Snapshot, IsReadFromStandardInput) {
    TextFile const file(everything);
    StandardInput const input(file.descriptor());
    EXPECT_EQ(readSnapshot("-").received.switches->size(), 3);
}

TEST(Snapshot, NamesStandardInputInAnError) {
    TextFile const file("{]");
    StandardInput const input(file.descriptor());
    EXPECT_EQ(errorFor("-"), "standard input:1:2: found ']', expected the name of a member or '}'");
}

TEST(Snapshot, NamesAFileThatCannotBeRead) {
    EXPECT_EQ(errorFor("/no/such/file"), "/no/such/file: No such file or directory");
    EXPECT_EQ(errorFor(""), ": No such file or directory");
    EXPECT_EQ(errorFor("/"), "/: Is a directory");
}

TEST(Snapshot, EscapesControlCharactersInAFileName) {
    EXPECT_EQ(errorFor("/no/\x1b[31m\nfile"), "/no/\\x1b[31m\\x0afile: No such file or directory");
}

TEST(Snapshot, RefusesAFileThatIsTooLong) {
    TextFile const file("");
    ASSERT_EQ(::ftruncate(file.descriptor(), 5368709120), 0);
    EXPECT_EQ(errorFor(file.path()),
              file.path() + ": found 5368709120 bytes, expected at most 4294967295");
}

/// Whether `line` reports that `document` ends within true or false.
bool blamesCutWord(std::string const & line, std::string const & document) {
    constexpr std::array<char const *, 7> words{"t", "tr", "tru", "f", "fa", "fal", "fals"};
    return std::any_of(words.begin(), words.end(), [&](std::string const & word) {
        return document.ends_with(" " + word) &&
               line.ends_with(": found " + word + ", expected a value");
    });
}

TEST(Snapshot, IsRefusedWhenTruncatedAnywhere) {
    for (std::size_t length = 0; length < everything.size(); ++length) {
        auto const document = everything.substr(0, length);
        auto const line = refusal(document);
        EXPECT_TRUE(line.find("found the end of the file, expected ") != std::string::npos ||
                    blamesCutWord(line, document))
            << length << ": " << line;
    }
}

bool isOneLine(std::string const & line) {
    return std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Expects `document` to be read, or to be refused with a complete message.
void readsOrIsRefused(std::string const & document) {
    auto const line = refusal(document);
    bool const placed = line.find(": ") != std::string::npos &&
                        line.find("found ") != std::string::npos &&
                        line.find(", expected ") != std::string::npos;
    EXPECT_TRUE(line == "accepted" || placed) << line;
    EXPECT_TRUE(isOneLine(line)) << line;
}

TEST(Snapshot, WithAnyByteChangedIsReadOrRefused) {
    using namespace std::string_view_literals;
    for (std::size_t at = 0; at < everything.size(); ++at) {
        for (char const byte : "\0\n\"\\{}[]:, 09.-eunt\x1b\x7f\x80\xc3\xff"sv) {
            auto document = everything;
            document[at] = byte;
            readsOrIsRefused(document);
        }
    }
}

TEST(Snapshot, WithAnyByteRemovedOrDoubledIsReadOrRefused) {
    for (std::size_t at = 0; at < everything.size(); ++at) {
        auto document = everything;
        document.erase(at, 1);
        readsOrIsRefused(document);
        document = everything;
        document.insert(at, 1, everything[at]);
        readsOrIsRefused(document);
    }
}

struct Malformed {
    std::string document;
    std::string error;
};

void expectMalformed(std::initializer_list<Malformed> all) {
    for (auto const & malformed : all) {
        EXPECT_EQ(refusal(malformed.document), malformed.error) << malformed.document;
    }
}

using namespace std::string_literals;

TEST(Snapshot, RefusesAnythingButOneObject) {
    expectMalformed({{"", "1:1: found the end of the file, expected an object"},
                     {" \n\t ", "2:3: found the end of the file, expected an object"},
                     {"null", "1:1: found null, expected an object"},
                     {"[]", "1:1: found an array, expected an object"},
                     {"\"x\"", "1:1: found \"x\", expected an object"},
                     {"7", "1:1: found 7, expected an object"},
                     {"\xef\xbb\xbf{}", "1:1: found a byte order mark, expected an object"},
                     {"\xff\xfe{\0}\0"s, "1:1: found \\xff\\xfe, expected an object"},
                     {"\0"s, "1:1: found \\x00, expected an object"},
                     {everything + "}", "27:83: found '}', expected the end of the file"},
                     {everything + "\n{}", "28:1: found an object, expected the end of the file"},
                     {everything + "\0"s, "27:83: found \\x00, expected the end of the file"},
                     {everything + ",", "27:83: found ',', expected the end of the file"}});
}

TEST(Snapshot, RefusesBadSyntaxAtTheFirstWrongToken) {
    expectMalformed(
        {{R"({"version":1,})", "1:14: found '}', expected the name of a member"},
         {R"({,"version":1})", "1:2: found ',', expected the name of a member or '}'"},
         {R"({"version" 1})", "1:12: version: found 1, expected ':'"},
         {R"({"version":1 "format":""})", "1:14: found \"format\", expected ',' or '}'"},
         {R"({version:1})", "1:2: found version, expected the name of a member or '}'"},
         {R"({'version':1})", "1:2: found 'version', expected the name of a member or '}'"},
         {R"({"format":'x'})", R"(1:11: format: found 'x', expected "vxlan-controller-state")"},
         {R"({"version":})", "1:12: version: found '}', expected 1"},
         {R"({"version":1]})", "1:13: found ']', expected ',' or '}'"},
         {withTables(R"({"multipath":{"02:00:00:00:00:01":["10.0.0.1",]}})"),
          R"(1:132: received.switches.leaf1."10".multipath."02:00:00:00:00:01"[1]: found )"
          "']', expected an IPv4 address such as 10.0.0.1"},
         {R"({"version":1/*one*/})", "1:12: version: found 1/*one*/, expected 1"}});
}

TEST(Snapshot, RefusesBadTextsAtTheFirstWrongByte) {
    expectMalformed(
        {{"{\"received\":{\"switches\":{\"a\nb\":{}}}}",
          "1:28: received.switches: found the byte 0x0a, expected control characters as "
          "escapes"},
         {"{\"received\":{\"switches\":{\"a\0b\":{}}}}"s,
          "1:28: received.switches: found the byte 0x00, expected control characters as "
          "escapes"},
         {"{\"received\":{\"switches\":{\"leaf\xff\":{}}}}",
          "1:31: received.switches: found the byte 0xff, expected UTF-8"},
         {"{\"received\":{\"switches\":{\"\xed\xa0\x80\":{}}}}",
          "1:27: received.switches: found the byte 0xed, expected UTF-8"},
         {"{\"received\":{\"switches\":{\"\xc0\xaf\":{}}}}",
          "1:27: received.switches: found the byte 0xc0, expected UTF-8"},
         {R"({"received":{"switches":{"a\x41":{}}}})",
          R"(1:28: received.switches: found "\x41", expected an escape that stands for a )"
          "character"},
         {R"({"received":{"switches":{"\udc00 ":{}}}})",
          R"(1:27: received.switches: found "\udc00", expected an escape that stands for )"
          "a character"},
         {R"({"received":{"switches":{"\ud800\u0041":{}}}})",
          R"(1:27: received.switches: found "\ud800", expected an escape that stands for )"
          "a character"},
         {R"({"format":"a\q"})",
          R"(1:13: format: found "\q", expected an escape that stands for a character)"}});
}

TEST(Snapshot, ShowsOnlyTheStartOfALongText) {
    std::string const longText(1000000, 'x');
    EXPECT_EQ(refusal("{\"" + longText + "\":1}"),
              "1:2: found \"" + std::string(60, 'x') +
                  "...\", expected \"format\", \"version\", \"received\", \"advertised\", "
                  "\"routers\", \"origin\", \"details\" or \"uncounted\"");
    EXPECT_EQ(tablesRefusal("{\"arp\":{\"" + longText + "\":{}}}"),
              ".arp: found \"" + std::string(60, 'x') +
                  "...\", expected an IPv4 or IPv6 address such as 10.0.0.1 or 2001:db8::1");
    EXPECT_EQ(refusal(withReceived("{\"switches\":{\"" + longText + "\":1}}")),
              "1:1000075: received.switches.\"" + std::string(60, 'x') +
                  "...\": found 1, expected an object whose members are VNIs");
}

TEST(Snapshot, AcceptsLongNames) {
    std::string const longName(1000000, 'x');
    auto const mount = mounted(
        withReceived("{\"switches\":{\"" + longName + "\":{},\"\\n" + longName + "\":{}}}"));
    EXPECT_TRUE(switchOf(mount, longName));
    EXPECT_TRUE(switchOf(mount, "\n" + longName));
}

TEST(Snapshot, SurvivesDeepNesting) {
    EXPECT_EQ(refusal(withTables(std::string(10000, '[') + std::string(10000, ']'))),
              "1:86: received.switches.leaf1.\"10\": found an array, expected an object of tables");
    EXPECT_EQ(refusal(std::string(1000000, '[')), "1:1: found an array, expected an object");
    std::string objects;
    for (int level = 0; level < 10000; ++level) {
        objects.append("{\"a\":");
    }
    EXPECT_TRUE(refusal(objects).ends_with(".a: found an object, expected at most 64 levels"));
}

TEST(Snapshot, SurvivesALongNumber) {
    EXPECT_EQ(refusal("{\"version\":" + std::string(1000000, '1') + "}"),
              "1:12: version: found " + std::string(60, '1') + "..., expected 1");
}

} // namespace

} // namespace vxshow::test
