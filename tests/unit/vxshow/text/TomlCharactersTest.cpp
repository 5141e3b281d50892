#include "vxshow/text/TomlCharacters.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace text;

TEST(TomlCharacters, AStringCanHoldEveryCharacter) {
    for (auto const * const document :
         {"",
          "\xEF\xBB\xBF"
          "a = 1",
          "a = \"\xC3\xA4\"", "a = \"\\\"\xC3\xA4\"", "a = '\\' # \xC3\xA4", "\"\xC3\xA4\" = 1",
          "'\xC3\xA4' = 1", "a = \"\"\"\n\xC3\xA4\"\"\"", "a = '''\n\xC3\xA4''' # \xC3\xA4\nb = 1",
          "a = \"\"\"\"\xC3\xA4\"\"\"\"\"", "a = \"\"\"\\\"\"\"\xC3\xA4\"\"\"",
          "a = '' # \xC3\xA4"}) {
        EXPECT_EQ(misplacedNonAscii(document), std::nullopt) << document;
    }
}

TEST(TomlCharacters, AByteOutsideStringsAndCommentsIsFound) {
    EXPECT_EQ(misplacedNonAscii("d\xC3\xA4 = 1"), 1U);
    EXPECT_EQ(misplacedNonAscii("d\xE4"), 1U);
    EXPECT_EQ(misplacedNonAscii("# \xC3\xA4\n\xFF"), 5U);
    EXPECT_EQ(misplacedNonAscii("a = ''\xC3\xA4"), 6U);
    EXPECT_EQ(misplacedNonAscii("a = \"\"\"\"\"\"\xC3\xA4"), 10U);
    EXPECT_EQ(misplacedNonAscii("a = \"\"\"\"\"\"\"\"\xC3\xA4"), 12U);
    EXPECT_EQ(misplacedNonAscii("a = \"\\\\\"\xC3\xA4"), 8U);
    EXPECT_EQ(misplacedNonAscii("a = '\\'\xC3\xA4"), 7U);
}

// The library reads such a value up to its end, quotes and all, before it finds out that it is
// none.
TEST(TomlCharacters, AQuoteInsideABareValueOpensNoString) {
    EXPECT_EQ(misplacedNonAscii("a = 4'\xC3\xA4'"), 6U);
    EXPECT_EQ(misplacedNonAscii("a = 4'\xC3\xA4"), 6U);
    EXPECT_EQ(misplacedNonAscii("a = 1.\"\xC3\xA4\""), 7U);
    EXPECT_EQ(misplacedNonAscii("a = -\"\"\"\xC3\xA4\"\"\""), 8U);
    EXPECT_EQ(misplacedNonAscii("a = [1.'\xC3\xA4']"), 8U);
    EXPECT_EQ(misplacedNonAscii("a = ['', {b = 1'\xC3\xA4'}]"), 16U);
    EXPECT_EQ(misplacedNonAscii("a = [{b = ''}, 1'\xC3\xA4']"), 17U);
    EXPECT_EQ(misplacedNonAscii("a = [\n[],\n[1.'\xC3\xA4']]"), 14U);
}

TEST(TomlCharacters, AQuoteAfterADotOpensAStringInAKey) {
    EXPECT_EQ(misplacedNonAscii("a.'\xC3\xA4' = 1"), std::nullopt);
    EXPECT_EQ(misplacedNonAscii("[a.'\xC3\xA4']\nb = ['\xC3\xA4']\n[c.'\xC3\xA4']"), std::nullopt);
    EXPECT_EQ(misplacedNonAscii("a = {b.'\xC3\xA4' = 1, c.'\xC3\xA4' = '\xC3\xA4'}"), std::nullopt);
    EXPECT_EQ(misplacedNonAscii("a = [{b.'\xC3\xA4' = 1},\n{c.'\xC3\xA4' = 1}]\nd.'\xC3\xA4' = 1"),
              std::nullopt);
}

TEST(TomlCharacters, AnEscapedByteIsFound) {
    EXPECT_EQ(misplacedNonAscii("a = \"\\\xC3\xA4\""), 6U);
    EXPECT_EQ(misplacedNonAscii("a = \"\"\"\n\\\xC3\xA4"), 9U);
    EXPECT_EQ(misplacedNonAscii("a = '\\\xC3\xA4'"), std::nullopt);
    EXPECT_EQ(misplacedNonAscii("a = \"\\\\\xC3\xA4\""), std::nullopt);
}

TEST(TomlCharacters, AByteAfterAnEscapedLineEndIsFound) {
    EXPECT_EQ(misplacedNonAscii("a = \"\"\"\\ \n\n \xC3\xA4\"\"\""), 12U);
    EXPECT_EQ(misplacedNonAscii("a = \"\"\"\\\n x\xC3\xA4\"\"\""), std::nullopt);
    EXPECT_EQ(misplacedNonAscii("a = \"\"\"\\\n"), std::nullopt);
}

TEST(TomlCharacters, NothingIsFoundAfterAStringWithoutAnEnd) {
    EXPECT_EQ(misplacedNonAscii("a = \"\n\xC3\xA4"), std::nullopt);
    EXPECT_EQ(misplacedNonAscii("a = \"\\"), std::nullopt);
    EXPECT_EQ(misplacedNonAscii("a = '''\n''\xC3\xA4"), std::nullopt);
}

} // namespace vxshow::test
