#include "Vex/Strep.h"

#include "Bridging/VlanIdOrNone.h"
#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenAddrWithMask.h"
#include "Nolt/IpGenPrefix.h"
#include "Quay/Seqno32.h"
#include "Vex/Name.h"
#include "Vxlan/Vni.h"
#include "Vxlan/VniOrNone.h"

#include <gtest/gtest.h>

using namespace Vex;
using namespace std::string_view_literals;

namespace {

/// The result of `read(it, end)` on a text of which it must leave `left` unread.
template <class Read>
auto leaving(std::string_view left, String const & text, Read read) {
    auto it = text.begin();
    auto const end = text.end();
    auto const result = read(it, end);
    EXPECT_EQ(std::string_view(it, end), left);
    return result;
}

template <class T>
T attr(String const & text, std::string_view left) {
    return leaving(left, text, deserializeAttr<T>);
}

/// The message of the error that the call raises, which must be exactly an `Error`.
template <class Error, class Call>
std::string raised(Call call) {
    try {
        call();
    } catch (Error const & error) {
        EXPECT_EQ(typeid(error).name(), typeid(Error).name());
        return error.what();
    }
    return "nothing was raised";
}

template <class Error, class T>
std::string refused(String const & text) {
    return raised<Error>([&] { static_cast<void>(strepToValue<T>(text)); });
}

/// Expects that `text` is the form of `value`, and that `value` is read back from it.
template <class T>
void expectForm(T const & value, char const * text) {
    EXPECT_EQ(valueToStrep(value), text);
    EXPECT_TRUE(strepToValue<T>(text) == value) << text;
}

/// Reads itself, as a model's value does.
class Bracket {
public:
    Bracket(String::IteratorConst & it, String::IteratorConst const & end) {
        needString(it, end, "[");
        inner_ = strepWord(it, end);
        needString(it, end, "]");
    }

    std::string_view inner() const { return inner_; }

private:
    std::string_view inner_;
};

} // namespace

TEST(Strep, WritesAndReadsThePlatformsValues) {
    expectForm(Nolt::EthAddr::fromString("00:1c:73:0a:0b:0c"), "00:1c:73:0a:0b:0c");
    expectForm(Nolt::IpAddr::fromString("10.0.0.1"), "10.0.0.1");
    expectForm(Nolt::IpGenAddr::fromString("10.0.0.1"), "10.0.0.1");
    expectForm(Nolt::IpGenAddr::fromString("2001:db8::1"), "2001:db8::1");
    expectForm(Nolt::IpGenAddr(), "");
    expectForm(Nolt::IpGenAddrWithMask::fromString("10.1.2.3/24"), "10.1.2.3/24");
    expectForm(Nolt::IpGenAddrWithMask(), "");
    expectForm(Nolt::IpGenPrefix::fromString("2001:db8::/32"), "2001:db8::/32");
    expectForm(Vxlan::Vni(4098), "4098");
    expectForm(Vxlan::VniOrNone(), "");
    expectForm(Bridging::VlanIdOrNone(4094), "4094");
    expectForm(Quay::Seqno32(4294967295), "4294967295");
}

TEST(Strep, WritesAndReadsNumbersAndBooleans) {
    expectForm(U8{255}, "255");
    expectForm(U16{65535}, "65535");
    expectForm(U32{4294967295}, "4294967295");
    expectForm(U64{18446744073709551615U}, "18446744073709551615");
    expectForm(U64{0}, "0");
    expectForm(true, "True");
    expectForm(false, "False");
}

TEST(Strep, ATextIsItsOwnForm) {
    expectForm(String("leaf 1, it's {here}"), "leaf 1, it's {here}");
    expectForm(String(), "");
    expectForm(Name("Ethernet1/1"), "Ethernet1/1");
    expectForm(std::string("any string class"), "any string class");
    String const bytes("a\0\n\xff"sv);
    EXPECT_EQ(strepToValue<String>(valueToStrep(bytes)), bytes);
}

TEST(NeedString, MovesPastTheLiteral) {
    String const text("abcd");
    auto it = text.begin();
    needString(it, text.end(), "ab");
    EXPECT_EQ(it - text.begin(), 2);
    needString(it, text.end(), "");
    needString(it, text.end(), "cd");
    EXPECT_TRUE(it == text.end());
}

TEST(NeedString, ShowsWhatItFoundAndWhatItNeeds) {
    auto const need = [](String const & text) {
        return raised<ParseError>([&] {
            auto it = text.begin();
            needString(it, text.end(), ", 'ip': ");
        });
    };
    EXPECT_EQ(need(",  'ip': 1"), R"(',  \'ip\': 1': expected ", 'ip': ")");
    EXPECT_EQ(need(", 'ip':"), R"(', \'ip\':': expected ", 'ip': ")");
    EXPECT_EQ(need(""), R"('': expected ", 'ip': ")");
    EXPECT_EQ(need("\x1b[2J"), R"('\x1b[2J': expected ", 'ip': ")");
}

TEST(NeedString, DoesNotReadPastTheEndOfTheRange) {
    String const text("abcd");
    auto it = text.begin();
    EXPECT_THROW(needString(it, text.begin() + 2, "abc"), ParseError);
}

TEST(StrepToValueEnd, RefusesTrailingText) {
    String const text("ab");
    strepToValueEnd(text.end(), text.end());
    EXPECT_EQ(raised<ParseError>([&] { strepToValueEnd(text.begin() + 1, text.end()); }),
              "'b': expected the end of the text");
}

TEST(StrepWord, TakesTheLongestRunOfItsCharacters) {
    EXPECT_EQ(leaving(", 'vtepIp': 1", "00-1C:73.0a/9, 'vtepIp': 1", strepWord), "00-1C:73.0a/9");
    EXPECT_EQ(leaving("})", "7})", strepWord), "7");
    EXPECT_EQ(leaving("", "7", strepWord), "7");
    EXPECT_EQ(leaving(" 7", " 7", strepWord), "");
    EXPECT_EQ(leaving("", "", strepWord), "");
    std::string const wordBytes =
        ".:-/0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    for (int byte = 0; byte < 256; ++byte) {
        String const text(1, static_cast<char>(byte));
        bool const ofWord = wordBytes.find(text) != std::string::npos;
        EXPECT_EQ(leaving(ofWord ? "" : text, text, strepWord), ofWord ? text : "") << byte;
    }
}

TEST(StrepText, TakesEverythingUpToTheNextAttributeOrTheEndOfTheValue) {
    EXPECT_EQ(leaving(", 'vtep': 1})", "a, b', 'vtep': 1})", strepText), "a, b'");
    EXPECT_EQ(leaving("})", "{a}})", strepText), "{a}");
    EXPECT_EQ(leaving("}), 'a'", "x}), 'a'", strepText), "x");
    EXPECT_EQ(leaving(", 'a': })", ", 'a': })", strepText), "");
    EXPECT_EQ(leaving("", "to the end", strepText), "to the end");
}

TEST(DeserializeAttr, LeavesWhatFollowsTheValue) {
    EXPECT_EQ(attr<Nolt::IpAddr>("10.0.0.1, 'moveCount': 7", ", 'moveCount': 7").value(),
              0x0A000001U);
    EXPECT_EQ(attr<Quay::Seqno32>("7})", "})").value(), 7U);
    EXPECT_EQ(attr<U8>("255})", "})"), 255);
    EXPECT_TRUE(attr<bool>("True, 'x'", ", 'x'"));
    EXPECT_EQ(attr<String>("a b, 'x'", ", 'x'"), "a b");
    EXPECT_EQ(attr<Nolt::IpGenAddr>("})", "})"), Nolt::IpGenAddr());
}

TEST(DeserializeAttr, ReadsThreeFormsOfAnEthernetAddress) {
    auto const address = Nolt::EthAddr::fromString("00:1c:73:0a:0b:0c");
    for (String const text : {"00:1c:73:0a:0b:0c", "00-1C-73-0A-0B-0C", "001c.730A.0b0C"}) {
        EXPECT_EQ(attr<Nolt::EthAddr>(text + ", 'vtepIp': ", ", 'vtepIp': "), address) << text;
    }
}

TEST(DeserializeAttr, ATypeWithAStringConstructorReadsItself) {
    EXPECT_EQ(attr<Bracket>("[ab], 'x'", ", 'x'").inner(), "ab");
    EXPECT_EQ(raised<ParseError>([] { attr<Bracket>("[ab", ""); }), "'': expected \"]\"");
}

TEST(DeserializeAttr, RaisesTheTypesOwnError) {
    EXPECT_EQ((refused<ParseError, Nolt::IpAddr>("10.0.0.256")),
              "'10.0.0.256': expected an IPv4 address such as 10.0.0.1");
    EXPECT_EQ((refused<ParseError, Quay::Seqno32>("-1")),
              "'-1': expected a number from 0 to 4294967295");
    EXPECT_EQ((refused<RangeError, Quay::Seqno32>("4294967296")),
              "'4294967296': expected a number from 0 to 4294967295");
    EXPECT_EQ((refused<RangeError, Bridging::VlanIdOrNone>("65536")),
              "'65536': expected a VLAN number from 0 to 65535, 0 for none");
}

TEST(DeserializeAttr, ANumberAboveItsTypeIsOutOfRange) {
    EXPECT_EQ((refused<RangeError, U8>("256")), "'256': expected a number from 0 to 255");
    EXPECT_EQ((refused<RangeError, U16>("65536")), "'65536': expected a number from 0 to 65535");
    EXPECT_EQ((refused<RangeError, U32>("4294967296")),
              "'4294967296': expected a number from 0 to 4294967295");
    EXPECT_EQ((refused<RangeError, U64>("18446744073709551616")),
              "'18446744073709551616': expected a number from 0 to 18446744073709551615");
}

TEST(DeserializeAttr, RefusesTextThatIsNotANumberOrBoolean) {
    for (char const * text : {"", "-1", "01", "0x1", "1.0", "x", "18446744073709551616x"}) {
        EXPECT_THROW(strepToValue<U64>(text), ParseError) << text;
    }
    for (char const * text : {"", "true", "1", "Truer", "TrueFalse"}) {
        EXPECT_EQ((refused<ParseError, bool>(text)),
                  quoted(text).append(": expected True or False"));
    }
}

TEST(RethrowFromDeserializeAttr, StartsWithTheNameOfTheAttribute) {
    EXPECT_EQ(raised<RangeError>(
                  [] { rethrowFromDeserializeAttr(RangeError("9", "at most 8"), "moveCount"); }),
              "moveCount: '9': expected at most 8");
    EXPECT_EQ(raised<ParseError>(
                  [] { rethrowFromDeserializeAttr(ParseError("x", "a number"), "moveCount"); }),
              "moveCount: 'x': expected a number");
}

TEST(StrepToValue, RefusesTrailingText) {
    EXPECT_EQ((refused<ParseError, U32>("7 ")), "' ': expected the end of the text");
    EXPECT_EQ((refused<ParseError, String>("a, 'b")), R"(', \'b': expected the end of the text)");
}
