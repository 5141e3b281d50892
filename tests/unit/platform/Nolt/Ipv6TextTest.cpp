#include "Nolt/IpGenAddr.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <arpa/inet.h>

#include <random>

using Nolt::Family;
using Nolt::IpGenAddr;
using Vex::U64;
using Vex::U8;
using namespace std::string_view_literals;

namespace {

IpGenAddr::Ipv6Bytes bytesOf(U64 high, U64 low) {
    IpGenAddr::Ipv6Bytes bytes;
    for (std::size_t index = 8; index-- > 0; high >>= 8, low >>= 8) {
        bytes[index] = static_cast<U8>(high);
        bytes[index + 8] = static_cast<U8>(low);
    }
    return bytes;
}

/// The C library's text form. It agrees with RFC 5952 except for ::/96, where it writes a
/// dotted quad.
std::string libraryText(U64 high, U64 low) {
    auto const bytes = bytesOf(high, low);
    std::array<char, INET6_ADDRSTRLEN> text{};
    return inet_ntop(AF_INET6, bytes.data(), text.data(), text.size());
}

/// The C library's reading, which accepts the same texts.
std::optional<IpGenAddr> libraryRead(std::string const & text) {
    IpGenAddr::Ipv6Bytes bytes{};
    if (inet_pton(AF_INET6, text.c_str(), bytes.data()) != 1) {
        return std::nullopt;
    }
    return IpGenAddr(bytes);
}

/// 128 bits whose groups are often zero, and often short.
U64 sparseHalf(std::mt19937_64 & random) {
    U64 half = 0;
    for (int group = 0; group < 4; ++group) {
        auto const bits = random();
        auto const width = bits >> 60;
        half = half << 16 | (width < 7 ? 0 : bits & 0xFFFFU >> (width & 0xC));
    }
    return half;
}

} // namespace

TEST(Ipv6Text, ReadsTheFormsOfRfc4291) {
    struct Example {
        std::string_view text;
        U64 high;
        U64 low;
    };

    for (auto const & [text, high, low] : std::vector<Example>{
             {"ABCD:EF01:2345:6789:ABCD:EF01:2345:6789", 0xABCDEF0123456789, 0xABCDEF0123456789},
             {"2001:DB8:0:0:8:800:200C:417A", 0x20010DB800000000, 0x00080800200C417A},
             {"2001:DB8::8:800:200C:417A", 0x20010DB800000000, 0x00080800200C417A},
             {"FF01:0:0:0:0:0:0:101", 0xFF01000000000000, 0x101},
             {"FF01::101", 0xFF01000000000000, 0x101},
             {"0:0:0:0:0:0:0:1", 0, 1},
             {"::1", 0, 1},
             {"0:0:0:0:0:0:0:0", 0, 0},
             {"0000:0000:0000:0000:0000:0000:0000:0000", 0, 0},
             {"::", 0, 0},
             {"1::", 0x0001000000000000, 0},
             {"0:0:0:0:0:0:13.1.68.3", 0, 0x0D014403},
             {"0:0:0:0:0:FFFF:129.144.52.38", 0, 0xFFFF81903426},
             {"::13.1.68.3", 0, 0x0D014403},
             {"::FFFF:129.144.52.38", 0, 0xFFFF81903426},
             {"1:2:3:4:5:6:7.8.9.10", 0x0001000200030004, 0x000500060708090A},
             {"1:2:3:4:5::7.8.9.10", 0x0001000200030004, 0x000500000708090A},
             {"::2:3:4:5:6:7:8", 0x0000000200030004, 0x0005000600070008},
             {"1:2:3:4:5:6:7::", 0x0001000200030004, 0x0005000600070000},
             {"1:2:3::5:6:7:8", 0x0001000200030000, 0x0005000600070008},
             {"fe80::0001:02", 0xFE80000000000000, 0x10002},
         }) {
        EXPECT_TRUE(IpGenAddr::tryFromString(text) == IpGenAddr::ipv6(high, low)) << text;
    }
}

TEST(Ipv6Text, RefusesEverythingElse) {
    valuechecks::expectRefused<IpGenAddr>({
        ":",
        ":::",
        "::::",
        "1",
        "1:",
        ":1",
        "1:2:3:4:5:6:7",
        "1:2:3:4:5:6:7:",
        "1:2:3:4:5:6:7:8:",
        ":1:2:3:4:5:6:7:8",
        "1:2:3:4:5:6:7:8:9",
        "1:2:3:4:5:6:7:8::",
        "::1:2:3:4:5:6:7:8",
        "1:2:3:4::5:6:7:8",
        "1::2::3",
        "::1::",
        "1:::2",
        ":::1",
        "1:::",
        "12345::",
        "::00001",
        "::10000",
        "::g",
        "::-1",
        "::+1",
        ":: 1",
        " ::1",
        "::1 ",
        "::1\n",
        "::0x1",
        "::1%eth0",
        "fe80::1%1",
        "[::1]",
        "::1/128",
        "::1.2.3",
        "::1.2.3.4.5",
        "::1.2.3.04",
        "::1.2.3.256",
        "::1.2.3.4:5",
        "::1.2.3.4:",
        "1.2.3.4::",
        "1.2.3.4:5::",
        "1:2:3:4:5:6:7:8.9.10.11",
        "1:2:3:4:5:1.2.3.4",
        "1:2:3:4:5:6::7.8.9.10",
        "1:2:3:4:5:6:7::8.9.10.11",
        "::1.2.3.4\0"sv,
        "::\0"sv,
    });
}

TEST(Ipv6Text, WritesTheRecommendedForm) {
    struct Example {
        std::string_view read;
        std::string_view written;
    };

    // The first examples are those of RFC 5952.
    for (auto const & [read, written] : std::vector<Example>{
             {"2001:db8:0:0:1:0:0:1", "2001:db8::1:0:0:1"},
             {"2001:0db8:0:0:1:0:0:1", "2001:db8::1:0:0:1"},
             {"2001:db8::1:0:0:1", "2001:db8::1:0:0:1"},
             {"2001:db8::0:1:0:0:1", "2001:db8::1:0:0:1"},
             {"2001:0db8::1:0:0:1", "2001:db8::1:0:0:1"},
             {"2001:db8:0:0:1::1", "2001:db8::1:0:0:1"},
             {"2001:DB8:0:0:1::1", "2001:db8::1:0:0:1"},
             {"2001:db8:aaaa:bbbb:cccc:dddd:eeee:0001", "2001:db8:aaaa:bbbb:cccc:dddd:eeee:1"},
             {"2001:db8:aaaa:bbbb:cccc:dddd:eeee:AAAA", "2001:db8:aaaa:bbbb:cccc:dddd:eeee:aaaa"},
             {"2001:0db8::0001", "2001:db8::1"},
             {"2001:db8:0:0:0:0:2:1", "2001:db8::2:1"},
             {"2001:db8::1:1:1:1:1", "2001:db8:0:1:1:1:1:1"},
             {"2001:db8:0:1:1:1:1:1", "2001:db8:0:1:1:1:1:1"},
             {"2001:0:0:1:0:0:0:1", "2001:0:0:1::1"},
             {"::ffff:192.0.2.1", "::ffff:192.0.2.1"},
             {"0:0:0:0:0:0:0:0", "::"},
             {"0:0:0:0:0:0:0:1", "::1"},
             {"1:0:0:0:0:0:0:0", "1::"},
             {"0:0:1:0:0:1:0:0", "::1:0:0:1:0:0"},
             {"0:1:0:1:0:1:0:1", "0:1:0:1:0:1:0:1"},
             {"1:0:1:0:1:0:1:0", "1:0:1:0:1:0:1:0"},
             {"0:2:3:4:5:6:7:8", "0:2:3:4:5:6:7:8"},
             {"1:2:3:4:5:6:7:0", "1:2:3:4:5:6:7:0"},
             {"1:2:3:4:5:6:0:0", "1:2:3:4:5:6::"},
             {"1000:100:10:1:f000:f00:f0:f", "1000:100:10:1:f000:f00:f0:f"},
             {"::ffff:0:0", "::ffff:0.0.0.0"},
             {"::ffff:ffff:ffff", "::ffff:255.255.255.255"},
             {"::1.2.3.4", "::102:304"},
             {"::fffe:1.2.3.4", "::fffe:102:304"},
             {"::1:ffff:1.2.3.4", "::1:ffff:102:304"},
             {"1::ffff:1.2.3.4", "1::ffff:102:304"},
             {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},
         }) {
        auto const address = IpGenAddr::fromString(read);
        EXPECT_EQ(address.family(), Family::ipv6);
        valuechecks::expectText(address, written);
    }
}

TEST(Ipv6Text, AgreesWithTheLibraryOnEveryPatternOfZeroGroups) {
    for (unsigned pattern = 0; pattern < 256; ++pattern) {
        U64 high = 0;
        U64 low = 0;
        for (unsigned group = 0; group < 4; ++group) {
            high = high << 16 | ((pattern >> group & 1) != 0 ? 0xA0U + group : 0);
            low = low << 16 | ((pattern >> (group + 4) & 1) != 0 ? 0xB0U + group : 0);
        }
        auto const address = IpGenAddr::ipv6(high, low);
        if (high != 0 || low >> 32 != 0) {
            EXPECT_EQ(address.stringValue(), libraryText(high, low));
        }
        valuechecks::expectText(address, address.stringValue());
    }
}

TEST(Ipv6Text, AgreesWithTheLibraryOnRandomAddresses) {
    std::mt19937_64 random(128);
    for (int round = 0; round < 20000; ++round) {
        auto const high = sparseHalf(random);
        auto const low = sparseHalf(random);
        auto const address = IpGenAddr::ipv6(high, low);
        EXPECT_TRUE(IpGenAddr(bytesOf(high, low)) == address);
        if (high != 0 || low >> 32 != 0) {
            EXPECT_EQ(address.stringValue(), libraryText(high, low));
        }
        valuechecks::expectText(address, address.stringValue());
    }
}

TEST(Ipv6Text, AcceptsWhatTheLibraryAcceptsAndNoMore) {
    constexpr std::string_view alphabet = "::::....0019afAFg%/ ";
    std::mt19937_64 random(4291);
    std::array<int, 2> seen{};
    for (int round = 0; round < 100000; ++round) {
        auto text = libraryText(sparseHalf(random), sparseHalf(random));
        for (auto changes = random() % 3; changes > 0; --changes) {
            auto const place = random() % (text.size() + 1);
            char const character = alphabet[random() % alphabet.size()];
            switch (random() % 3) {
            case 0:
                text.insert(place, 1, character);
                break;
            case 1:
                text.erase(place, 1 + random() % 4);
                break;
            default:
                text.replace(place, 1, 1, character);
            }
        }
        if (text.find(':') == std::string::npos) {
            continue;
        }
        auto const expected = libraryRead(text);
        EXPECT_TRUE(IpGenAddr::tryFromString(text) == expected) << Vex::quoted(text);
        ++seen[expected.has_value() ? 1 : 0];
    }
    EXPECT_GT(seen[0], 20000);
    EXPECT_GT(seen[1], 20000);
}
