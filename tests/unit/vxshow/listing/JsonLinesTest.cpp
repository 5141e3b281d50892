#include "vxshow/listing/JsonLines.h"
#include "tests/unit/vxshow/listing/Hosts.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

/// The line of one name.
std::string nameLine(std::string_view name) {
    return written(listing::writeJsonLines, {host(name)}, {0});
}

} // namespace

TEST(JsonLines, ARowIsAnObjectThatNamesItsTable) {
    EXPECT_EQ(
        written(listing::writeJsonLines, {host("a", 4098, Vex::U64{3}, ipCell("2001:db8::1"))}),
        R"({"table":"hosts","name":"a","vni":4098,"macAddr":"02:00:00:00:00:01",)"
        R"("moveCount":3,"ipAddress":"2001:db8::1"})"
        "\n");
}

TEST(JsonLines, WithoutRowsNothingIsWritten) {
    EXPECT_EQ(written(listing::writeJsonLines, {}), "");
}

TEST(JsonLines, AnUnknownValueIsNull) {
    EXPECT_EQ(written(listing::writeJsonLines, {host("a", 10, listing::Unknown())}, {3, 4}),
              R"({"table":"hosts","moveCount":null,"ipAddress":null})"
              "\n");
}

TEST(JsonLines, ACountAbove2147483647IsUnsigned) {
    EXPECT_EQ(written(listing::writeJsonLines, {host("a", 10, Vex::U64{4294967295})}, {3}),
              R"({"table":"hosts","moveCount":4294967295})"
              "\n");
}

TEST(JsonLines, QuotationMarksBackslashesAndControlsAreEscaped) {
    EXPECT_EQ(nameLine("a\"b\\c\n\x1b"), R"({"table":"hosts","name":"a\"b\\c\u000a\u001b"})"
                                         "\n");
}

TEST(JsonLines, AnEmptyNameIsEmptyText) {
    EXPECT_EQ(nameLine(""), R"({"table":"hosts","name":""})"
                            "\n");
}

TEST(JsonLines, Utf8StaysAsItIs) {
    EXPECT_EQ(nameLine("S\u00fcd \u5317"), "{\"table\":\"hosts\",\"name\":\"S\u00fcd \u5317\"}\n");
}

TEST(JsonLines, EachByteThatIsNotUtf8IsAnEscape) {
    EXPECT_EQ(nameLine("a\xff\xe2\x82z"), R"({"table":"hosts","name":"a\\xff\\xe2\\x82z"})"
                                          "\n");
}

} // namespace vxshow::test
