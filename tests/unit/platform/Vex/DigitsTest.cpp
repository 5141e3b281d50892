#include "Vex/Digits.h"

#include <gtest/gtest.h>

#include <string>

using Vex::hexValue;
using Vex::isDecimal;
using Vex::noHexDigit;
using Vex::readDecimal;
using Vex::U32;

namespace {

constexpr U32 most = 0xFFFFFFFF;

} // namespace

TEST(ReadDecimal, ReadsTheWholeRange) {
    EXPECT_EQ(readDecimal("0", most), 0U);
    EXPECT_EQ(readDecimal("10", most), 10U);
    EXPECT_EQ(readDecimal("4294967295", most), most);
    EXPECT_EQ(readDecimal("0", 0), 0U);
}

TEST(ReadDecimal, RefusesNumbersAboveTheMaximum) {
    EXPECT_FALSE(readDecimal("1", 0));
    EXPECT_FALSE(readDecimal("256", 255));
    EXPECT_FALSE(readDecimal("4294967296", most));
    EXPECT_FALSE(readDecimal("9999999999", most));
    EXPECT_FALSE(readDecimal("18446744073709551616", most));
    EXPECT_FALSE(readDecimal(std::string(1000, '9'), most));
}

TEST(ReadDecimal, RefusesEveryOtherSpelling) {
    for (auto const * text : {"", "00", "01", "+1", "-1", "-0", " 1", "1 ", "0x1", "1e1", "1.0",
                              "1,000", "a", "\xd9\xa1"}) {
        EXPECT_FALSE(readDecimal(text, most)) << text;
    }
    EXPECT_FALSE(readDecimal(std::string_view("1\0", 2), most));
}

TEST(IsDecimal, AcceptsNumbersOfAnySize) {
    for (auto const * text : {"0", "7", "10", "4294967296", "99999999999999999999999999"}) {
        EXPECT_TRUE(isDecimal(text)) << text;
    }
}

TEST(IsDecimal, RefusesEveryOtherSpelling) {
    for (auto const * text : {"", "00", "01", "+1", "-1", " 1", "1 ", "0x1", "1.0", "a"}) {
        EXPECT_FALSE(isDecimal(text)) << text;
    }
}

TEST(HexValue, AcceptsTheTwentyTwoDigitsAndNoOtherByte) {
    std::string_view const lower = "0123456789abcdef";
    std::string_view const upper = "0123456789ABCDEF";
    for (int byte = 0; byte < 256; ++byte) {
        auto const character = static_cast<char>(byte);
        auto const place = std::min(lower.find(character), upper.find(character));
        auto const expected = place == std::string_view::npos ? std::size_t{noHexDigit} : place;
        EXPECT_EQ(hexValue(character), expected) << byte;
    }
}
