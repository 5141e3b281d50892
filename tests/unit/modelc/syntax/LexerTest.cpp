#include "modelc/syntax/Lexer.h"

#include <gtest/gtest.h>

namespace modelc {

namespace {

/// "KIND:TEXT@LINE:COLUMN" for each token, including the last, the end of the file.
std::string shownTokens(std::string_view source) {
    std::string text;
    for (auto const & token : tokenize(source)) {
        text += text.empty() ? "" : " ";
        text += token.kind == TokenKind::doc    ? "doc:" + token.text
                : token.kind == TokenKind::text ? "text:" + token.text
                : token.kind == TokenKind::end  ? "end"
                                                : describe(token);
        text.append("@").append(std::to_string(token.at.line));
        text.append(":").append(std::to_string(token.at.column));
    }
    return text;
}

Problem problemOf(std::string_view source) {
    try {
        tokenize(source);
    } catch (SyntaxError const & error) {
        return error.problem;
    }
    return {{0, 0}, "no problem"};
}

} // namespace

TEST(Lexer, FindsWordsNumbersAndPunctuationWithTheirLocations) {
    EXPECT_EQ(shownTokens("a_1 ( B ) { }\n[ ] : :: , = 42"),
              "'a_1'@1:1 '('@1:5 'B'@1:7 ')'@1:9 '{'@1:11 '}'@1:13 '['@2:1 ']'@2:3 ':'@2:5 "
              "'::'@2:7 ','@2:10 '='@2:12 '42'@2:14 end@2:16");
}

TEST(Lexer, NeedsNoBlanksBetweenTokens) {
    EXPECT_EQ(shownTokens("a:b::c[d]"),
              "'a'@1:1 ':'@1:2 'b'@1:3 '::'@1:4 'c'@1:6 '['@1:7 'd'@1:8 ']'@1:9 end@1:10");
}

TEST(Lexer, AnEmptyFileHasOnlyItsEnd) {
    EXPECT_EQ(shownTokens(""), "end@1:1");
}

TEST(Lexer, SkipsTwoSlashCommentsAndKeepsThreeSlashOnes) {
    EXPECT_EQ(shownTokens("// a comment\nx // another\n/// About y.  \r\n///  indented\n///\ny"),
              "'x'@2:1 doc:About y.@3:1 doc: indented@4:1 doc:@5:1 'y'@6:1 end@6:2");
}

TEST(Lexer, ATabIsOneColumn) {
    EXPECT_EQ(shownTokens("\t\tx"), "'x'@1:3 end@1:4");
}

TEST(Lexer, ReadsStringsWithBothEscapes) {
    EXPECT_EQ(shownTokens(R"("a \"b\" \\ // c")"), R"(text:a "b" \ // c@1:1 end@1:18)");
}

TEST(Lexer, RejectsUnexpectedBytesAndMalformedStrings) {
    struct {
        char const * source;
        unsigned line;
        unsigned column;
        char const * text;
    } const cases[] = {
        {"a\n  b; c", 2, 4, "';' has no meaning in a model"},
        {"a / b", 1, 3, "'/' has no meaning in a model"},
        {"a \x01", 1, 3, "byte 0x01 has no meaning in a model"},
        {"a \xc3\xa9", 1, 3, "byte 0xc3 has no meaning in a model"},
        {"x \"abc", 1, 3, "the string does not end on its line; the closing '\"' is missing"},
        {"x \"abc\ndef\"", 1, 3,
         "the string does not end on its line; the closing '\"' is missing"},
        {"x \"a\\nb\"", 1, 5, "unknown escape in a string; only \\\" and \\\\ are allowed"},
        {"x \"a\\", 1, 5, "unknown escape in a string; only \\\" and \\\\ are allowed"},
    };

    for (auto const & wrong : cases) {
        Problem const problem = problemOf(wrong.source);
        EXPECT_EQ(problem.text, wrong.text) << wrong.source;
        EXPECT_EQ(problem.at.line, wrong.line) << wrong.source;
        EXPECT_EQ(problem.at.column, wrong.column) << wrong.source;
    }
}

TEST(Lexer, ANulByteIsRejectedLikeAnyOther) {
    EXPECT_EQ(problemOf(std::string_view("a\0b", 3)).text, "byte 0x00 has no meaning in a model");
}

} // namespace modelc
