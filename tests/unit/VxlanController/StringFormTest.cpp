#include "VxlanController/VxlanControllerCliModel.h"

#include "Vex/Strep.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

using namespace VxlanController::Cli;
using Nolt::EthAddr;
using Nolt::IpAddr;
using Quay::Seqno32;
using Vex::strepToValue;
using Vex::String;

namespace {

template <class T>
concept HasNot = requires(T const & value) {
    !value;
};

constexpr char const * form = "Value('VxlanController::Cli::MacVtep', ** {'macAddr': "
                              "00:1c:73:0a:0b:0c, 'vtepIp': 10.0.0.1, 'moveCount': 7})";

MacVtep someMacVtep() {
    return MacVtep(EthAddr::fromString("00:1c:73:0a:0b:0c"), IpAddr(0x0A000001), Seqno32(7));
}

/// The form with the one occurrence of `part` replaced.
String changed(std::string_view part, std::string_view replacement) {
    String text(form);
    auto const at = text.find(part);
    EXPECT_NE(at, String::npos) << part;
    EXPECT_EQ(text.find(part, at + 1), String::npos) << part;
    text.replace(at, part.size(), replacement);
    return text;
}

/// The message of the Error that reading a MacVtep from the text raises.
template <class Error>
std::string refused(String const & text) {
    try {
        strepToValue<MacVtep>(text);
    } catch (Error const & error) {
        return error.what();
    }
    return "it was read";
}

/// Whether the text is refused, or is exactly the string form of the value that it reads as.
bool isRefusedOrExact(String const & text) {
    try {
        return valueToStrep(strepToValue<MacVtep>(text)) == text;
    } catch (Vex::Error const &) {
        return true;
    }
}

MacVtep randomMacVtep(std::mt19937_64 & random) {
    EthAddr::Bytes bytes;
    for (auto & byte : bytes) {
        byte = static_cast<Vex::U8>(random());
    }
    // Shifts by any amount, so that short numbers come as often as long ones.
    return MacVtep(EthAddr(bytes), IpAddr(static_cast<Vex::U32>(random())),
                   Seqno32(static_cast<Vex::U32>(random()) >> random() % 32));
}

LRIpUplinkPortAddress someUplink() {
    LRIpUplinkPortAddress uplink(Nolt::IpGenAddrWithMask::fromString("10.1.2.3/24"));
    uplink.vlanIdIs(Bridging::VlanIdOrNone(100));
    uplink.macIs(EthAddr::fromString("00:1c:73:0a:0b:0c"));
    uplink.switchIdIs("leaf1");
    uplink.vtepIs(Nolt::IpGenAddr::fromString("2001:db8::1"));
    return uplink;
}

} // namespace

TEST(MacVtepStringForm, HoldsItsThreeAttributes) {
    EXPECT_EQ(valueToStrep(someMacVtep()), form);
    EXPECT_EQ(valueToStrep(MacVtep()),
              "Value('VxlanController::Cli::MacVtep', ** {'macAddr': 00:00:00:00:00:00, "
              "'vtepIp': 0.0.0.0, 'moveCount': 0})");
}

TEST(MacVtepStringForm, IsReadBack) {
    EXPECT_EQ(strepToValue<MacVtep>(form), someMacVtep());
    EXPECT_EQ(strepToValue<MacVtep>(valueToStrep(MacVtep())), MacVtep());
    MacVtep const greatest(EthAddr::fromString("ff:ff:ff:ff:ff:ff"), IpAddr(0xFFFFFFFF),
                           Seqno32(0xFFFFFFFF));
    EXPECT_EQ(strepToValue<MacVtep>(valueToStrep(greatest)), greatest);
}

TEST(MacVtepStringForm, IsReadWithEveryFormOfTheEthernetAddress) {
    for (char const * mac : {"00-1c-73-0a-0b-0c", "001c.730a.0b0c", "00:1C:73:0A:0B:0C"}) {
        EXPECT_EQ(strepToValue<MacVtep>(changed("00:1c:73:0a:0b:0c", mac)), someMacVtep()) << mac;
    }
}

TEST(MacVtepStringForm, TheReaderStopsAfterTheForm) {
    String const text = String(form).append(form);
    auto it = text.begin();
    auto const end = text.end();
    EXPECT_EQ(MacVtep(it, end), someMacVtep());
    EXPECT_EQ(std::string(it, end), form);
    EXPECT_EQ(MacVtep(it, end), someMacVtep());
    EXPECT_TRUE(it == end);
}

TEST(MacVtepStringForm, WithAnotherOpeningIsRefused) {
    EXPECT_EQ(refused<Vex::ParseError>(""),
              "'': expected \"Value('VxlanController::Cli::MacVtep', ** {\"");
    EXPECT_EQ(refused<Vex::ParseError>("Value('Cli::MacVtep', ** {})"),
              R"('Value(\'Cli::MacVtep\', ** {})': expected )"
              R"("Value('VxlanController::Cli::MacVtep', ** {")");
    for (auto const & text : {changed("Value(", "value("), changed("Value(", " Value("),
                              changed("MacVtep'", "MacVtepV2'"), changed("** {", "**{"),
                              changed("** {", "** { "), changed("', **", "',  **")}) {
        EXPECT_THROW(strepToValue<MacVtep>(text), Vex::ParseError) << text;
    }
}

TEST(MacVtepStringForm, WithAnotherAttributeNameIsRefused) {
    EXPECT_EQ(refused<Vex::ParseError>(changed("'macAddr': 00:1c:73:0a:0b:0c, 'vtepIp': ", "x")),
              R"('x10.0.0.1, \'moveCount\': 7})': expected "'macAddr': ")");
    EXPECT_EQ(refused<Vex::ParseError>(changed("vtepIp", "vtepip")),
              R"(', \'vtepip\': 10.0.0.1, \'moveCount\': 7})': expected ", 'vtepIp': ")");
    EXPECT_EQ(refused<Vex::ParseError>(changed("'moveCount'", "moveCount")),
              R"(', moveCount: 7})': expected ", 'moveCount': ")");
}

TEST(MacVtepStringForm, WithItsAttributesInAnotherOrderIsRefused) {
    EXPECT_EQ(refused<Vex::ParseError>(changed("'vtepIp': 10.0.0.1, 'moveCount': 7",
                                               "'moveCount': 7, 'vtepIp': 1.1.1.1")),
              R"(', \'moveCount\': 7, \'vtepIp\': 1.1.1.1})': expected ", 'vtepIp': ")");
}

TEST(MacVtepStringForm, WithAnAttributeLeftOutIsRefused) {
    EXPECT_EQ(refused<Vex::ParseError>(changed(", 'vtepIp': 10.0.0.1", "")),
              R"(', \'moveCount\': 7})': expected ", 'vtepIp': ")");
    EXPECT_EQ(refused<Vex::ParseError>(changed(", 'moveCount': 7", "")),
              R"('})': expected ", 'moveCount': ")");
}

TEST(MacVtepStringForm, WithOneMoreAttributeIsRefused) {
    EXPECT_EQ(refused<Vex::ParseError>(changed("})", ", 'x': 1})")),
              R"x(', \'x\': 1})': expected "})")x");
}

TEST(MacVtepStringForm, WithAnExtraSpaceAfterACommaIsRefusedAtTheLiteral) {
    EXPECT_EQ(refused<Vex::ParseError>(changed(", 'vtepIp'", ",  'vtepIp'")),
              R"(',  \'vtepIp\': 10.0.0.1, \'moveCount\': 7})': expected ", 'vtepIp': ")");
    EXPECT_EQ(refused<Vex::ParseError>(changed(", 'moveCount'", ",  'moveCount'")),
              R"(',  \'moveCount\': 7})': expected ", 'moveCount': ")");
}

TEST(MacVtepStringForm, WithAMalformedAttributeRaisesTheErrorOfItsTypeAndNamesTheField) {
    EXPECT_EQ(refused<Vex::ParseError>(changed("00:1c:73:0a:0b:0c", "00:1c:73:0a:0b")),
              "macAddr: '00:1c:73:0a:0b': expected an Ethernet address such as 00:1c:73:0a:0b:0c, "
              "00-1c-73-0a-0b-0c or 001c.730a.0b0c");
    EXPECT_EQ(refused<Vex::ParseError>(changed("10.0.0.1", "10.0.0.256")),
              "vtepIp: '10.0.0.256': expected an IPv4 address such as 10.0.0.1");
    EXPECT_EQ(refused<Vex::ParseError>(changed("10.0.0.1", "2001:db8::1")),
              "vtepIp: '2001:db8::1': expected an IPv4 address such as 10.0.0.1");
    EXPECT_EQ(refused<Vex::ParseError>(changed("10.0.0.1", "")),
              "vtepIp: '': expected an IPv4 address such as 10.0.0.1");
}

TEST(MacVtepStringForm, AMoveCountThatIsNotANumberNamesTheField) {
    for (char const * count : {"x", "-1", "07", "0x7", "7.0", "None", ""}) {
        EXPECT_EQ(refused<Vex::ParseError>(
                      changed("'moveCount': 7", String("'moveCount': ").append(count))),
                  "moveCount: " + Vex::quoted(count) + ": expected a number from 0 to 4294967295");
    }
}

TEST(MacVtepStringForm, AMoveCountOutOfRangeNamesTheField) {
    for (char const * count : {"4294967296", "99999999999999999999999"}) {
        EXPECT_EQ(refused<Vex::RangeError>(
                      changed("'moveCount': 7", String("'moveCount': ").append(count))),
                  "moveCount: " + Vex::quoted(count) + ": expected a number from 0 to 4294967295");
    }
}

TEST(MacVtepStringForm, WithAnotherClosingIsRefused) {
    EXPECT_EQ(refused<Vex::ParseError>(changed("})", ")")), R"x(')': expected "})")x");
    EXPECT_EQ(refused<Vex::ParseError>(changed("})", "}")), R"x('}': expected "})")x");
    EXPECT_EQ(refused<Vex::ParseError>(changed("})", " })")), R"x(' })': expected "})")x");
}

TEST(MacVtepStringForm, WithAnyFurtherCharacterIsRefusedAtTheEnd) {
    for (int byte = 0; byte < 256; ++byte) {
        String const more(1, static_cast<char>(byte));
        EXPECT_EQ(refused<Vex::ParseError>(form + more),
                  Vex::quoted(more) + ": expected the end of the text");
    }
}

TEST(MacVtepStringForm, RandomValuesAreReadBack) {
    std::mt19937_64 random(15);
    for (int round = 0; round < 20000; ++round) {
        MacVtep const value = randomMacVtep(random);
        EXPECT_EQ(strepToValue<MacVtep>(valueToStrep(value)), value);
    }
}

TEST(MacVtepStringForm, RandomValuesCutShortAreRefused) {
    std::mt19937_64 random(16);
    for (int round = 0; round < 200; ++round) {
        String const text = valueToStrep(randomMacVtep(random));
        for (std::size_t length = 0; length < text.size(); ++length) {
            EXPECT_THROW(strepToValue<MacVtep>(text.substr(0, length)), Vex::ParseError) << text;
        }
    }
}

TEST(MacVtepStringForm, RandomValuesWithACharacterInsertedAreRefusedOrExact) {
    std::mt19937_64 random(17);
    for (int round = 0; round < 3; ++round) {
        String const text = valueToStrep(randomMacVtep(random));
        for (std::size_t at = 0; at <= text.size(); ++at) {
            for (int byte = 0; byte < 256; ++byte) {
                String more = text;
                more.insert(at, 1, static_cast<char>(byte));
                EXPECT_TRUE(isRefusedOrExact(more)) << more;
            }
        }
    }
}

TEST(MacVtepMultiPathStringForm, IsTheSameForEverySetOfVteps) {
    EthAddr const mac = EthAddr::fromString("00:1c:73:0a:0b:0c");
    MacVtepMultiPath three(mac);
    for (Vex::U32 const ip : {1U, 2U, 3U}) {
        three.vtepIpListIs(IpAddr(ip), true);
    }
    EXPECT_EQ(valueToStrep(three), "Value('VxlanController::Cli::MacVtepMultiPath', ** "
                                   "{'macAddr': 00:1c:73:0a:0b:0c, 'vtepIpList': None})");
    EXPECT_EQ(valueToStrep(MacVtepMultiPath(mac)), valueToStrep(three));
    EXPECT_EQ(valueToStrep(MacVtepMultiPath()),
              "Value('VxlanController::Cli::MacVtepMultiPath', ** "
              "{'macAddr': 00:00:00:00:00:00, 'vtepIpList': None})");
}

TEST(LRIpUplinkPortAddressStringForm, HoldsAllButThePorts) {
    LRIpUplinkPortAddress uplink = someUplink();
    constexpr char const * text =
        "Value('VxlanController::Cli::LRIpUplinkPortAddress', ** {'ip': 10.1.2.3/24, "
        "'vlanId': 100, 'mac': 00:1c:73:0a:0b:0c, 'port': None, 'switchId': leaf1, "
        "'vtep': 2001:db8::1})";
    EXPECT_EQ(valueToStrep(uplink), text);
    uplink.portIs("Ethernet1", true);
    uplink.portIs("Ethernet2", true);
    EXPECT_EQ(valueToStrep(uplink), text);
}

TEST(LRIpUplinkPortAddressStringForm, TheDefaultHasEmptyTexts) {
    EXPECT_EQ(valueToStrep(LRIpUplinkPortAddress()),
              "Value('VxlanController::Cli::LRIpUplinkPortAddress', ** {'ip': , 'vlanId': 0, "
              "'mac': 00:00:00:00:00:00, 'port': None, 'switchId': , 'vtep': })");
}

TEST(StringForm, IsWhatTheOutputOperatorWrites) {
    std::ostringstream out;
    out << someMacVtep() << MacVtepMultiPath() << someUplink();
    EXPECT_EQ(out.str(), form + valueToStrep(MacVtepMultiPath()) + valueToStrep(someUplink()));
}

TEST(StringFormDeathTest, AMultipathValueCannotBeRead) {
    constexpr char const * failed =
        ": MacVtepMultiPath: assertion "
        "'!\"No String constructor for MacVtepMultiPath - has collection\"' failed\n$";
    String const text = valueToStrep(MacVtepMultiPath());
    EXPECT_EXIT(strepToValue<MacVtepMultiPath>(text), testing::KilledBySignal(SIGABRT), failed);
    EXPECT_EXIT(strepToValue<MacVtepMultiPath>("x"), testing::KilledBySignal(SIGABRT), failed);
    auto it = text.begin();
    EXPECT_EXIT(MacVtepMultiPath(it, text.end()), testing::KilledBySignal(SIGABRT), failed);
}

TEST(StringFormDeathTest, AnUplinkCannotBeRead) {
    constexpr char const * failed =
        ": LRIpUplinkPortAddress: assertion "
        "'!\"No String constructor for LRIpUplinkPortAddress - has collection\"' failed\n$";
    String const text = valueToStrep(someUplink());
    EXPECT_EXIT(strepToValue<LRIpUplinkPortAddress>(text), testing::KilledBySignal(SIGABRT),
                failed);
    auto it = text.begin();
    EXPECT_EXIT(LRIpUplinkPortAddress(it, text.end()), testing::KilledBySignal(SIGABRT), failed);
}

TEST(ValueComparison, LooksAtEveryAttributeOfAMacVtep) {
    MacVtep const value = someMacVtep();
    EXPECT_EQ(value, MacVtep(value.macAddr(), value.vtepIp(), value.moveCount()));
    EXPECT_NE(value, MacVtep(EthAddr(), value.vtepIp(), value.moveCount()));
    EXPECT_NE(value, MacVtep(value.macAddr(), IpAddr(), value.moveCount()));
    EXPECT_NE(value, MacVtep(value.macAddr(), value.vtepIp(), Seqno32()));
}

TEST(ValueComparison, LooksAtTheVtepsOfAMultipathValue) {
    MacVtepMultiPath one(EthAddr::fromString("00:1c:73:0a:0b:0c"));
    MacVtepMultiPath other = one;
    one.vtepIpListIs(IpAddr(1), true);
    EXPECT_NE(one, other);
    EXPECT_EQ(one, one);
    other.vtepIpListIs(IpAddr(2), true);
    EXPECT_NE(one, other);
    other.vtepIpListIs(IpAddr(1), true);
    one.vtepIpListIs(IpAddr(2), true);
    EXPECT_EQ(one, other);
}

TEST(ValueComparison, LooksAtEveryAttributeOfAnUplink) {
    LRIpUplinkPortAddress const uplink = someUplink();
    EXPECT_EQ(uplink, someUplink());
    EXPECT_NE(uplink, LRIpUplinkPortAddress());
    auto const differs = [&](auto change) {
        LRIpUplinkPortAddress other = uplink;
        change(other);
        return !(uplink == other);
    };
    EXPECT_TRUE(differs([](auto & other) { other.vlanIdIs(Bridging::VlanIdOrNone()); }));
    EXPECT_TRUE(differs([](auto & other) { other.macIs(EthAddr()); }));
    EXPECT_TRUE(differs([](auto & other) { other.portIs("Ethernet1", true); }));
    EXPECT_TRUE(differs([](auto & other) { other.switchIdIs("leaf2"); }));
    EXPECT_TRUE(differs([](auto & other) { other.vtepIs(Nolt::IpGenAddr()); }));
    EXPECT_FALSE(differs([](auto &) {}));
}

TEST(ValueNot, IsTrueForDefaultsOnly) {
    EXPECT_TRUE(!LRIpUplinkPortAddress());
    EXPECT_TRUE(!LRIpUplinkPortAddress(Nolt::IpGenAddrWithMask::fromString("")));
    EXPECT_FALSE(!someUplink());
    LRIpUplinkPortAddress onlyPort;
    onlyPort.portIs("Ethernet1", true);
    EXPECT_FALSE(!onlyPort);
    static_assert(HasNot<MacVtepMultiPath> && HasNot<LRIpUplinkPortAddress>);
    static_assert(!HasNot<MacVtep>, "its default is as good a value as any other");
}
