#include "Descriptors.h"
#include "JsonReader.h"
#include "outfmt/AttrInfo.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

// A document with the string as bare list elements.
namespace outfmt::test {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

std::string document(std::string_view value) {
    return printed(compactFormat, [&](Printer & printer) {
        StringAttrInfo element(printer, "");
        element.setValue(value);
        printer.start();
        printer.startList("l");
        printer.addAttributesJson(1, element.getArg());
        printer.endList();
        printer.end();
    });
}

std::string json(std::string_view value) {
    std::string all = document(value);
    std::string_view before = "{\"l\":[\"";
    std::string_view after = "\"]}\n";
    EXPECT_TRUE(all.starts_with(before) && all.ends_with(after)) << all;
    return all.substr(before.size(), all.size() - before.size() - after.size());
}

TEST(JsonText, WritesOrdinaryTextUnchanged) {
    EXPECT_EQ(json(""), "");
    EXPECT_EQ(json("00:1c:73:0a:0b:0c"), "00:1c:73:0a:0b:0c");
    EXPECT_EQ(json("2001:db8::/32 <'%'> & /"), "2001:db8::/32 <'%'> & /");
}

TEST(JsonText, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(json(R"(say "hi" \ there)"), R"(say \"hi\" \\ there)");
    EXPECT_EQ(json("\b\f\n\r\t"), R"(\b\f\n\r\t)");
    EXPECT_EQ(json("\0\x01\x1b[31m\x1f"s), R"(\u0000\u0001\u001b[31m\u001f)");
}

TEST(JsonText, EscapesAtEveryPositionInAWord) {
    for (int byte = 0; byte < 0x80; ++byte) {
        for (std::size_t place = 0; place < 20; ++place) {
            std::string value(20, 'x');
            value[place] = static_cast<char>(byte);
            EXPECT_EQ(readJson(document(value)).members[0].second,
                      Json::list({Json::string(value)}))
                << byte << " at " << place;
        }
    }
}

TEST(JsonText, WritesDeleteAndAllValidUtf8Unchanged) {
    for (std::string_view value :
         {"\x7f", "\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80", "\xe2\x80\xa8", "\xe2\x80\xa9",
          "\xed\x9f\xbf", "\xee\x80\x80", "\xef\xbf\xbd", "\xef\xbf\xbf", "\xf0\x90\x80\x80",
          "\xf4\x8f\xbf\xbf", "Z\xc3\xbcrich \xe2\x82\xac \xf0\x9f\x90\xa7"}) {
        EXPECT_EQ(json(value), value);
    }
}

TEST(JsonText, ReplacesInvalidUtf8) {
    struct Case {
        std::string_view value;
        std::string_view shown; // '?' means U+FFFD
    };

    for (Case c : {
             Case{"\x80", "?"},                             // continuation without a lead
             {"a\xbfz", "a?z"},                             //
             {"\xff\xfe", "??"},                            // no UTF-8 bytes at all
             {"\xc0\x80", "??"},                            // overlong NUL
             {"\xc1\xbf", "??"},                            // overlong DEL
             {"\xe0\x9f\xbf", "???"},                       // overlong U+07FF
             {"\xf0\x8f\xbf\xbf", "????"},                  // overlong U+FFFF
             {"\xed\xa0\x80", "???"},                       // first surrogate
             {"\xed\xbf\xbf", "???"},                       // last surrogate
             {"\xf4\x90\x80\x80", "????"},                  // U+110000
             {"\xf5\x80\x80\x80", "????"},                  // beyond
             {"\xf8\x88\x80\x80\x80", "?????"},             // five bytes
             {"\xc3", "?"},                                 // cut at the end
             {"\xe2\x82", "?"},                             //
             {"\xf0\x9f\x90", "?"},                         //
             {"\xe2\x82(", "?("},                           // cut by a plain byte
             {"\xe2\xc3\xbc", "?\xc3\xbc"},                 // cut by a valid character
             {"\xf0\x9f\x90\xe2\x82\xac", "?\xe2\x82\xac"}, //
             {"\xe2\"\xe2\n", "?\\\"?\\n"},                 // cut by what is escaped
             {"eight by\xfftes more", "eight by?tes more"},
         }) {
        std::string expected;
        for (char character : c.shown) {
            if (character == '?') {
                expected += "\xef\xbf\xbd";
            } else {
                expected += character;
            }
        }
        EXPECT_EQ(json(c.value), expected);
    }
}

TEST(JsonText, IsWellFormedWhateverTheBytes) {
    std::mt19937 engine(99);
    constexpr std::string_view likely = "\x00\x1f\x20\"\\\x7f\x80\x8f\x90\x9f\xa0\xbf\xc0\xc2\xdf"
                                        "\xe0\xed\xef\xf0\xf4\xf5\xff"sv;
    for (int round = 0; round < 20'000; ++round) {
        std::string value(engine() % 24, '\0');
        for (char & byte : value) {
            byte = engine() % 2 == 0 ? likely[engine() % likely.size()]
                                     : static_cast<char>(engine() >> 8);
        }
        ASSERT_NO_THROW(readJson(document(value))) << testing::PrintToString(value);
    }
}

/// A value of a type that can write anything.
struct Anything {
    static constexpr std::size_t maxTextLength = 3;
    char middle;

    char * writeTo(char * to) const noexcept {
        to[0] = to[2] = '-';
        to[1] = middle;
        return to + 3;
    }
};

TEST(JsonText, EscapesTheTextOfAValue) {
    std::string all = printed(compactFormat, [](Printer & printer) {
        StringAttrInfo element(printer, "");
        printer.start();
        printer.startList("l");
        for (char const middle : {'a', '"', '\n', '\xff', 'a'}) {
            element.setValue(Anything{middle});
            printer.addAttributesJson(1, element.getArg());
        }
        printer.end();
    });
    EXPECT_EQ(all, "{\"l\":[\"-a-\",\"-\\\"-\",\"-\\n-\",\"-\xEF\xBF\xBD-\",\"-a-\"]}\n");
}

TEST(JsonText, EscapesOneOfSeveralAttributes) {
    std::string all = printed(compactFormat, [](Printer & printer) {
        StringAttrInfo plain(printer, "plain");
        StringAttrInfo quoted(printer, "quoted");
        Attr32Info quotedKey(printer, "a \"key\"");
        StringAttrInfo longText(printer, "a key that is as long as a line of text");
        plain.setValue("p");
        quoted.setValue("\"");
        quotedKey.setValue(-1);
        longText.setValue(std::string(5000, 'x'));
        printer.start();
        printer.addAttributesJson(2, plain.getArg(), quoted.getArg());
        printer.addAttributesJson(2, quotedKey.getArg(), plain.getArg());
        printer.addAttributesJson(2, plain.getArg(), longText.getArg());
        printer.end();
    });
    EXPECT_EQ(all, R"({"plain":"p","quoted":"\"","a \"key\"":-1,"plain":"p","plain":"p",)"
                   R"("a key that is as long as a line of text":")" +
                       std::string(5000, 'x') + "\"}\n");
}

TEST(JsonText, EscapesKeysToo) {
    std::string all = printed(compactFormat, [&](Printer & printer) {
        printer.start();
        printer.startDict("\"a\"\n\xff");
        printer.startList("\\");
        printer.end();
    });
    EXPECT_EQ(all, "{\"\\\"a\\\"\\n\xef\xbf\xbd\":{\"\\\\\":[]}}\n");
}

} // namespace
} // namespace outfmt::test
