#include "Nolt/EthAddr.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <random>
#include <type_traits>

using Nolt::EthAddr;
using Vex::U64;
using Vex::U8;
using namespace std::string_view_literals;

static_assert(sizeof(EthAddr) == sizeof(U64));
static_assert(std::is_trivially_copyable_v<EthAddr>);
static_assert(EthAddr({1, 2, 3, 4, 5, 6}).value() == 0x010203040506);

namespace {

constexpr EthAddr sample({0x00, 0x1c, 0x73, 0x0a, 0x0b, 0x0c});

std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char byte) { return static_cast<char>(std::toupper(byte)); });
    return text;
}

std::string displayed(EthAddr const & address) {
    return valuechecks::written(EthAddr::maxDisplayLength,
                                [&](char * out) { return address.writeDisplayTo(out); });
}

} // namespace

TEST(EthAddr, IsZeroByDefault) {
    EXPECT_TRUE(EthAddr().isZero());
    EXPECT_TRUE(!EthAddr());
    EXPECT_EQ(EthAddr().bytes(), EthAddr::Bytes{});
    valuechecks::expectText(EthAddr(), "00:00:00:00:00:00");
    EXPECT_EQ(EthAddr().displayString(), "0000.0000.0000");
}

TEST(EthAddr, IsNotZeroWhenAnyBitIsSet) {
    for (unsigned bit = 0; bit < 48; ++bit) {
        EXPECT_FALSE(!EthAddr::ofValue(U64{1} << bit)) << bit;
        EXPECT_FALSE(EthAddr::ofValue(U64{1} << bit).isZero()) << bit;
    }
}

TEST(EthAddr, ReadsThreeFormsInEitherCase) {
    for (auto const * text :
         {"00:1c:73:0a:0b:0c", "00:1C:73:0A:0B:0C", "00:1c:73:0A:0b:0C", "00-1c-73-0a-0b-0c",
          "00-1C-73-0A-0B-0C", "001c.730a.0b0c", "001C.730A.0B0C", "001c.730A.0b0C"}) {
        EXPECT_TRUE(EthAddr::tryFromString(text) == sample) << text;
        EXPECT_TRUE(EthAddr::fromString(text) == sample) << text;
    }
}

TEST(EthAddr, KeepsItsBytesInTheOrderOfTransmission) {
    EXPECT_EQ(sample.bytes(), (EthAddr::Bytes{0x00, 0x1c, 0x73, 0x0a, 0x0b, 0x0c}));
    EXPECT_EQ(sample.value(), 0x001c730a0b0cU);
}

TEST(EthAddr, IsMadeFromItsNumber) {
    EXPECT_EQ(EthAddr::ofValue(sample.value()), sample);
    EXPECT_EQ(EthAddr({0x02}).value(), 0x020000000000U);
    EXPECT_EQ(EthAddr::ofValue(Vex::U64{0}), EthAddr());
    EXPECT_EQ(EthAddr::ofValue(0xABCDFFFFFFFFFFFFU).value(), 0xFFFFFFFFFFFFU);
}

TEST(EthAddr, WritesBothFormsInLowerCase) {
    auto const address = EthAddr::fromString("AB-CD-EF-01-23-45");
    valuechecks::expectText(address, "ab:cd:ef:01:23:45");
    EXPECT_EQ(address.displayString(), "abcd.ef01.2345");
    EXPECT_EQ(displayed(address), "abcd.ef01.2345");
    valuechecks::expectText(EthAddr::ofValue(0xFFFFFFFFFFFF), "ff:ff:ff:ff:ff:ff");
}

TEST(EthAddr, RefusesEverythingElse) {
    valuechecks::expectRefused<EthAddr>({
        "",
        " ",
        "0",
        "00:1c:73:0a:0b",
        "00:1c:73:0a:0b:",
        "00:1c:73:0a:0b:0",
        "00:1c:73:0a:0b:0c:",
        "00:1c:73:0a:0b:0c:0d",
        "0:1c:73:0a:0b:0c",
        "000:1c:73:0a:0b:c",
        " 00:1c:73:0a:0b:0c",
        "00:1c:73:0a:0b:0c ",
        "00:1c:73:0a:0b: c",
        "00:1c:73:0a:0b:+c",
        "00:1c:73:0a:0b:0g",
        "0g:1c:73:0a:0b:0c",
        "00:1c-73:0a-0b:0c",
        "00-1c:73:0a:0b:0c",
        "00:1c:73:0a:0b-0c",
        "00.1c.73.0a.0b.0c",
        "00 1c 73 0a 0b 0c",
        "00::1c:73:0a:0b0c",
        "001c:730a:0b0c",
        "001c-730a-0b0c",
        "001c.730a:0b0c",
        "001c.730a.0b0",
        "001c.730a.0b0c.",
        "001c.730a.0b0cd",
        "001c.730.a0b0c",
        "001c.730a.0b0g",
        "001c730a0b0c",
        "0x001c730a0b0c",
        "00:1c:73:0a:0b:0\0"sv,
        "00:1c:73:0a:0b:0\xc3",
        "001c.730a.0b0c\xef\xbb\xbf",
    });
}

TEST(EthAddr, RefusesEveryWrongByteAtEveryPosition) {
    for (std::string const good : {"00:1c:73:0a:0b:0c", "00-1c-73-0a-0b-0c", "001c.730a.0b0c"}) {
        for (std::size_t place = 0; place < good.size(); ++place) {
            bool const digit = std::isxdigit(static_cast<unsigned char>(good[place])) != 0;
            for (int byte = 0; byte < 256; ++byte) {
                auto text = good;
                text[place] = static_cast<char>(byte);
                bool const fits = digit ? std::isxdigit(byte) != 0 : text[place] == good[place];
                EXPECT_EQ(EthAddr::tryFromString(text).has_value(), fits) << Vex::quoted(text);
            }
        }
    }
}

TEST(EthAddr, SaysWhatIsAccepted) {
    try {
        EthAddr::fromString("00:1c\x1b");
        FAIL();
    } catch (Vex::ParseError const & error) {
        EXPECT_STREQ(error.what(), "'00:1c\\x1b': expected an Ethernet address such as "
                                   "00:1c:73:0a:0b:0c, 00-1c-73-0a-0b-0c or 001c.730a.0b0c");
    }
}

TEST(EthAddr, IsOrderedByItsBytes) {
    valuechecks::expectAscending<EthAddr>({
        EthAddr(),
        EthAddr::fromString("0000.0000.0001"),
        EthAddr::fromString("0000.0000.00ff"),
        EthAddr::fromString("0000.0000.0100"),
        EthAddr::fromString("0000.0001.0000"),
        EthAddr::fromString("0000.ffff.ffff"),
        EthAddr::fromString("0001.0000.0000"),
        EthAddr::fromString("00ff.0000.0000"),
        EthAddr::fromString("0200.0000.0000"),
        EthAddr::fromString("7fff.ffff.ffff"),
        EthAddr::fromString("8000.0000.0000"),
        EthAddr::fromString("ffff.ffff.ffff"),
    });
}

TEST(EthAddr, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(
        valuechecks::manyValues([](unsigned number) { return EthAddr::ofValue(number); }));
    valuechecks::expectSpreadHashes(valuechecks::manyValues(
        [](unsigned number) { return EthAddr::ofValue(U64{number} << 32); }));
}

TEST(EthAddr, IsReadBackFromEveryForm) {
    std::mt19937_64 random(48);
    for (int round = 0; round < 5000; ++round) {
        auto const address = EthAddr::ofValue(random() >> 16);
        auto const text = address.stringValue();
        valuechecks::expectText(address, text);
        EXPECT_TRUE(EthAddr::tryFromString(upperCase(text)) == address) << text;
        EXPECT_TRUE(EthAddr::tryFromString(address.displayString()) == address) << text;
        EXPECT_EQ(displayed(address), address.displayString());
        auto dashed = text;
        std::replace(dashed.begin(), dashed.end(), ':', '-');
        EXPECT_TRUE(EthAddr::tryFromString(dashed) == address) << text;
    }
}
