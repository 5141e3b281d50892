#include "vxshow/terminal/LineColors.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace terminal;

namespace {

/// The text with its colours as tags, fed in pieces of `size` bytes.
std::string tagged(std::string_view text, Coloring coloring, std::size_t size = 1000) {
    LineColors colors(coloring);
    std::string out;
    for (std::string_view rest = text; !rest.empty();) {
        out.append(colors.take(rest.substr(0, size)));
        rest.remove_prefix(std::min(size, rest.size()));
    }
    out.append(colors.finish());
    for (auto const & [sequence, tag] : {std::pair("\x1b[1m", "<b>"), std::pair("\x1b[m", "</>")}) {
        for (auto at = out.find(sequence); at != std::string::npos; at = out.find(sequence)) {
            out.replace(at, std::string_view(sequence).size(), tag);
        }
    }
    return out;
}

constexpr std::string_view listing =
    "   Title\n---\n\nA   B\n--- ---\na   1\nTotal Rows of it: 1\n\n";
constexpr std::string_view coloredListing =
    "<b>   Title</>\n---\n\n<b>A   B</>\n--- ---\na   1\n<b>Total Rows of it: 1</>\n\n";

} // namespace

TEST(LineColors, AreThoseOfHeadersAndTotals) {
    EXPECT_EQ(tagged(listing, Coloring::fixedText), coloredListing);
}

TEST(LineColors, DoNotDependOnThePiecesOfTheText) {
    for (std::size_t size = 1; size < 40; ++size) {
        EXPECT_EQ(tagged(listing, Coloring::fixedText, size), coloredListing) << size;
    }
}

TEST(LineColors, OfATitleBetweenTwoRules) {
    EXPECT_EQ(tagged("---\nName\n---\na\n", Coloring::fixedText), "---\n<b>Name</>\n---\na\n");
}

TEST(LineColors, ARowThatBeginsAsATotalIsNone) {
    for (std::string const row : {"Total: leaf       10          0200.0000.0001  10.0.0.1  1",
                                  "Total Macs: 10.0.0.1", "Total 5: 5", "Total Macs:", "Total"}) {
        EXPECT_EQ(tagged(row + "\n", Coloring::fixedText), row + "\n");
    }
}

TEST(LineColors, OfRowsAreThoseOfTheFirstLineOfEachTable) {
    EXPECT_EQ(tagged("A  B\na  1\n\nC\nc\n", Coloring::rows), "<b>A  B</>\na  1\n\n<b>C</>\nc\n");
}

TEST(LineColors, OfRowsAreThoseOfAHeaderThatContinues) {
    EXPECT_EQ(tagged("A\n    B\na\n    1\n", Coloring::rows), "<b>A</>\n<b>    B</>\na\n    1\n");
}

TEST(LineColors, ATextWithoutEndOfLineIsComplete) {
    EXPECT_EQ(tagged("A", Coloring::rows), "<b>A</>");
    EXPECT_EQ(tagged("A\na", Coloring::rows), "<b>A</>\na");
    EXPECT_EQ(tagged("", Coloring::rows), "");
}

TEST(LineColors, WithoutColoringTheTextIsAsItWas) {
    EXPECT_EQ(tagged(listing, Coloring::none), listing);
}

} // namespace vxshow::test
