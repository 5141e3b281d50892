#include "vxshow/text/Toml.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace text;

namespace {

std::string refusalOfToml(std::string_view document) {
    try {
        readToml(document);
    } catch (TomlRefusal const & refusal) {
        return refusal.what();
    }
    return {};
}

std::string deepKey(std::size_t levels) {
    std::string key = "a";
    for (std::size_t level = 1; level < levels; ++level) {
        key += ".a";
    }
    return key;
}

} // namespace

TEST(Toml, KeepsMembersInFileOrderWithTheirPlaces) {
    auto const document = readToml("z = 1\n \"\xC3\xA4\" = 2\n'\xC3\xA4k' . x = 3\na = 4\n");
    std::vector<std::string> found;
    for (auto const & member : std::get<TomlValue::Table>(document.content)) {
        found.push_back(member.name + " " + std::to_string(member.place.line) + ":" +
                        std::to_string(member.place.column) + " " +
                        std::to_string(member.value.place.column));
    }
    EXPECT_EQ(found, (std::vector<std::string>{"z 1:1 5", "\xC3\xA4 2:2 8", "\xC3\xA4k 3:1 1",
                                               "a 4:1 5"}));
}

TEST(Toml, ColumnsCountCharacters) {
    EXPECT_EQ(refusalOfToml("a = \"\xC3\xA4\" x").substr(0, 5), "1:9: ");
}

TEST(Toml, RefusesInvalidTomlAtItsPlace) {
    EXPECT_EQ(refusalOfToml("a = 1\na = 2\n"),
              "2:5: Error while parsing key-value pair: cannot redefine existing integer 'a'");
    EXPECT_EQ(refusalOfToml("[[source]\n"),
              "1:10: Error while parsing table header: expected ']', saw '\\n'");
    EXPECT_EQ(refusalOfToml("a = \"x"), "1:7: Error while parsing string: encountered end-of-file");
    EXPECT_EQ(refusalOfToml("a = \"\xFF\""), "1:5: Encountered invalid utf-8 sequence");
}

TEST(Toml, RefusesAKeyThatStartsWithAnInvalidCharacter) {
    for (auto const * const document :
         {"[=]", "[[=]]", "[a.=]", "a.=1", "a = {=1}", "a = {b=1,=}"}) {
        EXPECT_EQ(refusalOfToml(document).substr(0, 2), "1:") << document;
    }
}

TEST(Toml, RefusesAByteOutsideAsciiInAKeyWithoutQuotes) {
    for (auto const * const document : {"d\xC3\xA4 = 1", "d\xC3\xA4", "d\xC3", "d\xE4 = 1"}) {
        EXPECT_EQ(refusalOfToml(document).substr(0, 5), "1:2: ") << document;
    }
    EXPECT_EQ(refusalOfToml("a = '\xC3\xA4'\n\"\xC3\xA4\".d\xC3\xA4 = 1\n"),
              "2:6: found the byte 0xc3, expected ASCII outside strings and comments and after a "
              "backslash");
}

TEST(Toml, RefusesAKeyThatIsCutOffWithinACharacter) {
    EXPECT_EQ(refusalOfToml("d\xC3\xA4"), "1:2: found the byte 0xc3, expected ASCII outside "
                                          "strings and comments and after a backslash");
    EXPECT_EQ(refusalOfToml("d\xE4"), "1:2: found the byte 0xe4, expected ASCII outside strings "
                                      "and comments and after a backslash");
}

TEST(Toml, ARefusalIsPrintable) {
    auto const refusal = refusalOfToml("\"\xC3\xA4\\u001b\" = 1\n\"\xC3\xA4\\u001b\" = 2\n");
    EXPECT_EQ(refusal.substr(0, 6), "2:13: ");
    EXPECT_NE(refusal.find("\\xc3\\xa4"), std::string::npos) << refusal;
    for (char const byte : refusal) {
        EXPECT_TRUE(byte >= ' ' && byte <= '~') << refusal;
    }
}

TEST(Toml, LimitsALineTo4096Bytes) {
    std::string const line = "#" + std::string(4095, 'x');
    EXPECT_EQ(refusalOfToml("\n" + line + "\n"), "");
    EXPECT_EQ(refusalOfToml("\n" + line + "x\n"),
              "2:1: found a line of 4097 bytes, expected at most 4096");
    EXPECT_EQ(refusalOfToml(line + "x"), "1:1: found a line of 4097 bytes, expected at most 4096");
}

TEST(Toml, LimitsADocumentTo16Mebibytes) {
    std::string const blank(std::size_t{16} << 20, '\n');
    EXPECT_EQ(refusalOfToml(blank), "");
    EXPECT_EQ(refusalOfToml(blank + "\n"), "1:1: found 16777217 bytes, expected at most 16777216");
}

TEST(Toml, RefusesTheDeepestKeysThatFitOnALine) {
    std::string document = "[" + deepKey(2000) + "]\n";
    for (int level = 0; level < 3; ++level) {
        document += deepKey(2000) + " = [\n{ ";
    }
    document += deepKey(2000) + " = 1";
    for (int level = 0; level < 3; ++level) {
        document += "}\n]";
    }
    EXPECT_EQ(refusalOfToml(document),
              "1:1: found a value in too many others, expected at most 8 levels");
}

TEST(Toml, LimitsNestingTo8Levels) {
    EXPECT_EQ(refusalOfToml("a = [[[[[[[1]]]]]]]"), "");
    EXPECT_EQ(refusalOfToml(deepKey(8) + " = 1"), "");
    EXPECT_EQ(refusalOfToml(deepKey(9) + " = 1"),
              "1:21: found a value in too many others, expected at most 8 levels");
    EXPECT_EQ(refusalOfToml("a = [[[[[[[[[1]]]]]]]]]").substr(0, 2), "1:");
}

} // namespace vxshow::test
