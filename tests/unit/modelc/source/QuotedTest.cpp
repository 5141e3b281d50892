#include "modelc/source/Quoted.h"

#include <gtest/gtest.h>

namespace modelc {

TEST(Quoted, IsTheStringLiteralOfTheText) {
    EXPECT_EQ(quotedForCpp(""), "\"\"");
    EXPECT_EQ(quotedForCpp("a \"b\" \\ c"), R"("a \"b\" \\ c")");
    EXPECT_EQ(quotedForCpp("x\n\ty"), R"("x\n\ty")");
    EXPECT_EQ(quotedForCpp(std::string("\0"
                                       "1\x7f",
                                       3)),
              R"("\0001\177")");
    EXPECT_EQ(quotedForCpp("\xc3\xa9"), "\"\xc3\xa9\"");
}

} // namespace modelc
