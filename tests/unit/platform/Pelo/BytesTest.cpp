#include "Pelo/Bytes.h"

#include <array>
#include <gtest/gtest.h>

namespace Pelo {
namespace {

TEST(Bytes, ANumberIsWrittenMostSignificantByteFirst) {
    std::array<Vex::U8, 6> out{9, 9, 9, 9, 9, 9};
    auto * end = writeNumber<3>(out.data(), 0x010203);
    end = writeNumber<2>(end, 0xfffe);
    EXPECT_EQ(end, out.data() + 5);
    EXPECT_EQ(out, (std::array<Vex::U8, 6>{1, 2, 3, 0xff, 0xfe, 9}));
    EXPECT_EQ(readNumber<3>(out.data()), 0x010203U);
    EXPECT_EQ(readNumber<2>(out.data() + 3), 0xfffeU);
}

TEST(Bytes, TheWidestNumberKeepsAllItsBits) {
    std::array<Vex::U8, 8> out{};
    writeNumber<8>(out.data(), 0x8877665544332211U);
    EXPECT_EQ(out[0], 0x88);
    EXPECT_EQ(readNumber<8>(out.data()), 0x8877665544332211U);
}

TEST(Bytes, BitsBeyondTheWidthAreNotWritten) {
    std::array<Vex::U8, 2> out{};
    writeNumber<1>(out.data(), 0x1234);
    EXPECT_EQ(out, (std::array<Vex::U8, 2>{0x34, 0}));
}

} // namespace
} // namespace Pelo
