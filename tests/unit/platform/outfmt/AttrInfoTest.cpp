#include "outfmt/AttrInfo.h"

#include "Vex/String.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

namespace outfmt {
namespace {

static_assert(static_cast<int>(AttrKind::integer32) == 0);
static_assert(static_cast<int>(AttrKind::string) == 1);
static_assert(static_cast<int>(AttrKind::boolean) == 2);
static_assert(static_cast<int>(AttrKind::integer64) == 5);
static_assert(!std::is_copy_constructible_v<StringAttrInfo>);

TEST(AttrInfo, PassesKeyKindAndValue) {
    Attr32Info number(jsonMode, "vni");
    number.setValue(std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(number.getArg().key, "vni");
    EXPECT_EQ(number.getArg().kind, AttrKind::integer32);
    EXPECT_EQ(number.getArg().number, -2147483648LL);

    Attr64Info large(jsonMode, "timeLearned");
    large.setValue(std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(large.getArg().kind, AttrKind::integer64);
    EXPECT_EQ(large.getArg().number, std::numeric_limits<std::int64_t>::max());

    StringAttrInfo text(jsonMode, "");
    text.setValue(Vex::String("10.0.0.1"));
    EXPECT_EQ(text.getArg().key, "");
    EXPECT_EQ(text.getArg().kind, AttrKind::string);
    EXPECT_EQ(text.getArg().text, "10.0.0.1");
}

TEST(AttrInfo, KeepsABooleanAsTextInTextMode) {
    BoolAttrInfo flag(textMode, "vniInDottedNotation");
    flag.setValue(true);
    EXPECT_EQ(flag.getArg().kind, AttrKind::boolean);
    EXPECT_EQ(flag.getArg().text, "True");
    flag.setValue(false);
    EXPECT_EQ(flag.getArg().text, "False");
}

TEST(AttrInfo, KeepsABooleanAsANumberInJsonMode) {
    BoolAttrInfo flag(jsonMode, "vniInDottedNotation");
    flag.setValue(true);
    EXPECT_EQ(flag.getArg().number, 1);
    EXPECT_EQ(flag.getArg().text, "");
    flag.setValue(false);
    EXPECT_EQ(flag.getArg().number, 0);
}

TEST(AttrInfo, KeepsTheJsonFormOfKeyAndText) {
    StringAttrInfo info(jsonMode, "macAddr");
    info.setValue("a text");
    EXPECT_EQ(info.getArg().quotedKey, "\"macAddr\":");
    EXPECT_EQ(info.getArg().quotedText, "\"a text\"");
    info.setValue("");
    EXPECT_EQ(info.getArg().quotedText, "\"\"");
}

TEST(AttrInfo, AcceptsAPartOfItsOwnValue) {
    StringAttrInfo info(jsonMode, "name");
    for (std::size_t const length : {20U, 98U, 99U, 100U, 300U}) {
        std::string value;
        for (std::size_t at = 0; at < length; ++at) {
            value += static_cast<char>('a' + at % 26);
        }
        for (std::size_t const from : {0U, 1U, 7U}) {
            info.setValue(value);
            info.setValue(info.getArg().text.substr(from));
            EXPECT_EQ(info.getArg().text, value.substr(from));
        }
    }
}

TEST(AttrInfo, KeepsNoQuotedFormThatNeedsEscapesOrIsLong) {
    StringAttrInfo info(jsonMode, "the \"key\"");
    info.setValue("plain");
    info.setValue("a\nb");
    EXPECT_EQ(info.getArg().quotedKey, "");
    EXPECT_EQ(info.getArg().quotedText, "");
    info.setValue("plain");
    info.setValue(std::string(100, 'x'));
    EXPECT_EQ(info.getArg().quotedText, "");

    std::string const longest(29, 'k');
    EXPECT_EQ(detail::QuotedKey(longest).view(), '"' + longest + "\":");
    EXPECT_EQ(detail::QuotedKey(longest + 'k').view(), "");
    EXPECT_EQ(detail::QuotedKey("").view(), "");
}

bool liesWithin(StringAttrInfo const & info) {
    auto const * begin = reinterpret_cast<char const *>(&info);
    char const * text = info.getArg().text.data();
    return begin <= text && text < begin + sizeof info;
}

TEST(StringAttrInfo, KeepsUpTo99BytesInItsOwnBuffer) {
    StringAttrInfo info(jsonMode, "key");
    for (std::size_t size :
         {0U, 1U, 98U, 99U, 100U, 101U, 104U, 105U, 100'000U, 99U, 0U, 100U, 3U}) {
        std::string value(size, 'v');
        info.setValue(value);
        EXPECT_EQ(info.getArg().text, value);
        EXPECT_EQ(liesWithin(info), size <= 99) << size;
    }
}

TEST(StringAttrInfo, KeepsAnyBytes) {
    StringAttrInfo info(jsonMode, "key");
    std::string value("\0\xff\n", 3);
    info.setValue(value);
    EXPECT_EQ(info.getArg().text, value);
    info.setValue(std::string_view());
    EXPECT_EQ(info.getArg().text, "");
}

TEST(StringAttrInfo, AcceptsAPartOfItsCurrentValue) {
    for (std::size_t size : {50U, 99U, 150U, 400U}) {
        std::string value;
        while (value.size() < size) {
            value += static_cast<char>('a' + value.size() % 26);
        }
        StringAttrInfo info(jsonMode, "key");
        info.setValue(value);
        info.setValue(info.getArg().text.substr(3));
        EXPECT_EQ(info.getArg().text, value.substr(3));
    }
}

struct Digits {
    static constexpr std::size_t maxTextLength = 10;

    char * writeTo(char * to) const noexcept {
        return std::ranges::copy(std::string_view("0123456789"), to).out;
    }
};

TEST(StringAttrInfo, LetsAValueWriteItsOwnText) {
    StringAttrInfo info(jsonMode, "key");
    info.setValue(std::string(200, 'x'));
    info.setValue(Digits());
    EXPECT_EQ(info.getArg().text, "0123456789");
    EXPECT_TRUE(liesWithin(info));
}

template <class Info, class Value>
void checkAssertions(Value value) {
    EXPECT_EXIT(Info(jsonMode, "key").getArg(), testing::KilledBySignal(SIGABRT),
                "^AttrInfo.h:[0-9]+: getArg: assertion 'hasValue' failed\n$");
    for (unsigned mode : {0U, 3U}) {
        EXPECT_EXIT(
            {
                Info info(mode, "key");
                info.setValue(value);
                info.getArg();
            },
            testing::KilledBySignal(SIGABRT), "assertion 'mode == 1 || mode == 2' failed\n$");
    }
}

TEST(AttrInfoDeathTest, NeedsAValueAndAKnownMode) {
    checkAssertions<Attr32Info>(1);
    checkAssertions<Attr64Info>(1);
    checkAssertions<BoolAttrInfo>(true);
    checkAssertions<StringAttrInfo>("value");
}

TEST(AttrInfoDeathTest, ABooleanAcceptsNoValueInAnUnknownMode) {
    BoolAttrInfo info(7, "key");
    EXPECT_EXIT(info.setValue(true), testing::KilledBySignal(SIGABRT),
                ": setValue: assertion 'mode == 1 || mode == 2' failed\n$");
}

} // namespace
} // namespace outfmt
