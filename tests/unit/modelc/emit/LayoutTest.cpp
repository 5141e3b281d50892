#include "modelc/emit/Layout.h"

#include <gtest/gtest.h>

namespace modelc {

namespace {

std::string letters(char letter, std::size_t count) {
    return std::string(count, letter);
}

} // namespace

TEST(Layout, AListThatFitsTakesOneLine) {
    EXPECT_EQ(wrapped(4, "f(", {"a", "b"}, ");"), "    f(a, b);\n");
    EXPECT_EQ(wrapped(0, "f(", {}, ") {"), "f() {\n");
}

TEST(Layout, ALineHasAtMostAHundredColumns) {
    EXPECT_EQ(wrapped(0, "f(", {letters('a', 48), letters('b', 46)}, ");"),
              "f(" + letters('a', 48) + ", " + letters('b', 46) + ");\n");
    EXPECT_EQ(wrapped(0, "f(", {letters('a', 48), letters('b', 47)}, ");"),
              "f(" + letters('a', 48) + ",\n  " + letters('b', 47) + ");\n");
}

TEST(Layout, AnItemTooLongToAlignMovesTheListToItsOwnLine) {
    std::string const head = letters('f', 60) + "(";
    EXPECT_EQ(wrapped(2, head, {letters('a', 50), "b"}, ");"),
              "  " + head + "\n      " + letters('a', 50) + ", b);\n");
}

TEST(Layout, ALongResultTypeTakesALineOfItsOwn) {
    EXPECT_EQ(signature(0, "int", "f", {"int a"}, ";"), "int f(int a;\n");
    std::string const result = letters('R', 80);
    EXPECT_EQ(signature(4, result, "function", {"int argument"}, ");"),
              "    " + result + "\n    function(int argument);\n");
}

TEST(Layout, ALongConjunctionIsBrokenAfterItsOperators) {
    std::string const a = letters('a', 50);
    std::string const b = letters('b', 50);
    EXPECT_EQ(statement(4, "return " + a + " && b && " + b + ";"),
              "    return " + a + " && b &&\n           " + b + ";\n");
}

TEST(Layout, ALongCallIsBrokenBetweenItsArguments) {
    std::string const a = letters('a', 60);
    EXPECT_EQ(statement(4, "    call(x(1, 2), " + a + ", " + a + ");"),
              "        call(x(1, 2), " + a + ",\n             " + a + ");\n");
}

TEST(Layout, ACallIsNotBrokenWithinAStringLiteral) {
    std::string const a = letters('a', 70);
    EXPECT_EQ(statement(4, "call(" + a + ", \", (\\\", b\", c, d);"),
              "    call(" + a + ", \", (\\\", b\", c, d);\n");
    EXPECT_EQ(statement(4, "call(" + a + ", " + a + ", \", (\\\", b\");"),
              "    call(" + a + ",\n         " + a + ", \", (\\\", b\");\n");
}

TEST(Layout, AnEmptyCommentLineHasNoTrailingBlank) {
    EXPECT_EQ(docComment(4, {"One.", "", "Two."}), "    /// One.\n    ///\n    /// Two.\n");
    EXPECT_EQ(docComment(4, {}), "");
}

} // namespace modelc
