#include "outfmt/TextWriter.h"

#include "Descriptors.h"
#include "Vex/Name.h"
#include "Vex/String.h"

#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>

namespace outfmt::test {
namespace {

using namespace std::string_view_literals;

/// The output of one addFrills call.
template <class... Args>
std::string line(FormatString<std::type_identity_t<Args>...> const & format, Args const &... args) {
    return printed(textFormat, [&](Printer & printer) { printer.addFrills(format, args...); });
}

template <class... Args>
std::string lineUpTo(std::size_t limit, FormatString<std::type_identity_t<Args>...> const & format,
                     Args const &... args) {
    return printed(textFormat,
                   [&](Printer & printer) { printer.addFrillsUpTo(limit, format, args...); });
}

char const * forPrintf(std::string const & value) {
    return value.c_str();
}

template <class T>
T forPrintf(T value) {
    return value;
}

/// The output of printf for the same format and arguments, cut after `limit` bytes.
template <class... Args>
std::string byPrintf(std::size_t limit, std::string_view format, Args const &... args) {
    std::string result(limit + 1, '\0');
    int length = std::snprintf(result.data(), result.size(), format.data(), forPrintf(args)...);
    result.resize(std::min(limit, static_cast<std::size_t>(length)));
    return result;
}

template <class... Args>
void expectAsPrintf(FormatString<std::type_identity_t<Args>...> const & format,
                    Args const &... args) {
    std::string_view source = format.parsed().text;
    EXPECT_EQ(line(format, args...), byPrintf(100000, source, args...)) << source;
    for (std::size_t limit : {0U, 1U, 16U, 17U, 18U, 40U, 1023U}) {
        EXPECT_EQ(lineUpTo(limit, format, args...), byPrintf(limit, source, args...))
            << source << " up to " << limit;
    }
}

class RandomArguments {
public:
    std::string text() {
        std::string result(length_(engine_), '\0');
        for (char & character : result) {
            character = static_cast<char>(byte_(engine_));
        }
        return result;
    }

    /// All magnitudes are equally likely, since the number of digits is what matters.
    int number() { return static_cast<int>(engine_()) >> shift_(engine_); }

private:
    std::mt19937 engine_{20240229};
    std::uniform_int_distribution<std::size_t> length_{0, 60};
    std::uniform_int_distribution<int> byte_{1, 255};
    std::uniform_int_distribution<int> shift_{0, 31};
};

TEST(TextWriter, FormatsLikePrintf) {
    RandomArguments random;
    for (int round = 0; round < 100; ++round) {
        std::string a = random.text();
        std::string b = random.text();
        std::string c = random.text();
        std::string d = random.text();
        int n = random.number();
        auto u = static_cast<unsigned>(random.number());
        expectAsPrintf("%-17s %-11s %-15s %-15s %5d\n", a, b, c, d, n);
        expectAsPrintf("%-17s %-11s %-15s ", a, b, c);
        expectAsPrintf("%-15s\n", a);
        expectAsPrintf(" %-15s", a);
        expectAsPrintf("\n%-29s", a);
        expectAsPrintf("%-8s %-15.15s %-18.18s %-9d\n", a, b, c, n);
        expectAsPrintf("%-19.19s %-8s %-15.15s %-18.18s %-9d\n", a, b, c, d, n);
        expectAsPrintf("%-46.46s %-15.15s %-17.17s\n", a, b, c);
        expectAsPrintf("%-49.49s %-18.18s %-11.11s\n", a, b, c);
        expectAsPrintf("%-11.11s %-18.18s %-17.17s %-4.4s %-30.30s\n", a, b, c, d, a);
        expectAsPrintf("Uplink ports:\n%s\n", a);
        expectAsPrintf("\nTotal entries for this criterion: %d\n\n", n);
        expectAsPrintf("%20s|%20.5s|%.0s|%.s|%s", a, b, c, d, a);
        expectAsPrintf("%d|%12d|%-12d|%u|%12u|%-12u", n, n, n, u, u, u);
        expectAsPrintf("%c|%5c|%-5c|%%%d%%%%", 'x', 'y', 'z', n);
    }
}

TEST(TextWriter, WritesTheFormatsOfAllTables) {
    EXPECT_EQ(line("         %s\n", "Received Flood Table"), "         Received Flood Table\n");
    EXPECT_EQ(line("%-17s %-11s %-15s %-15s %5d\n", "leaf1", "10", "0200.0000.0001", "10.0.0.1", 3),
              "leaf1             10          0200.0000.0001  10.0.0.1            3\n");
    EXPECT_EQ(line("%-11s %-15s", "10", "0200.0000.0001"), "10          0200.0000.0001 ");
    EXPECT_EQ(line("\n%-29s", " "), "\n                             ");
    EXPECT_EQ(line("%-11s %-15s %-15s %5d\n", "10", "0200.0000.0001", "10.0.0.1", 123456),
              "10          0200.0000.0001  10.0.0.1        123456\n");
    EXPECT_EQ(line("Total Mac Addresses for this criterion: %d\n", 0),
              "Total Mac Addresses for this criterion: 0\n");
    EXPECT_EQ(line("%-8s %-15.15s %-18.18s %-9d\n", "10", "2001:db8::1234:5678", "m", 7),
              "10       2001:db8::1234: m                  7        \n");
    EXPECT_EQ(line("%-11.11s %-18.18s %-49.49s\n", "Name", "Prefix", "Nexthop"),
              "Name        Prefix             Nexthop                                          \n");
}

TEST(TextWriter, WritesIntegersOfAllSizes) {
    EXPECT_EQ(line("%d %d", std::numeric_limits<std::int64_t>::min(),
                   std::numeric_limits<std::int64_t>::max()),
              "-9223372036854775808 9223372036854775807");
    EXPECT_EQ(line("%u", std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(line("%u %d", std::uint8_t{200}, static_cast<signed char>(-100)), "200 -100");
    EXPECT_EQ(line("%25d|", std::numeric_limits<std::int64_t>::min()),
              "     -9223372036854775808|");
}

TEST(TextWriter, PrintsAllBytesOfATextThatIsNotACString) {
    EXPECT_EQ(line("%s|%-5s|%5.2s|\n", "a\0b"sv, "c\0d"sv, "\0\0\0"sv), "a\0b|c\0d  |   \0\0|\n"sv);
}

TEST(TextWriter, AcceptsEveryTextTypeOfThePlatform) {
    char buffer[16] = "buffer";
    char const * pointer = "pointer";
    EXPECT_EQ(line("%s %s %s %s %s %s", "literal", buffer, pointer, Vex::String("string"),
                   Vex::Name("name"), "view"sv),
              "literal buffer pointer string name view");
}

TEST(TextWriter, NeverReadsAnArgumentAsAFormat) {
    EXPECT_EQ(line("%s|%-8s|", "%s%n%d", "100%"), "%s%n%d|100%    |");
}

/// Takes the place of an address type: writes N asterisks.
struct Asterisks {
    static constexpr std::size_t maxTextLength = 64;
    std::size_t count;

    char * writeTo(char * to) const noexcept {
        std::memset(to, '*', count);
        return to + count;
    }
};

TEST(TextWriter, LetsAValueWriteItsOwnText) {
    EXPECT_EQ(line("%s|%-6s|%6s|", Asterisks{3}, Asterisks{3}, Asterisks{3}), "***|***   |   ***|");
    EXPECT_EQ(line("%-6.2s|%6.2s|%.0s|", Asterisks{3}, Asterisks{3}, Asterisks{3}),
              "**    |    **||");
    std::string stars(64, '*');
    EXPECT_EQ(line("%-2s|%2s|%s|", Asterisks{64}, Asterisks{3}, Asterisks{0}), stars + "|***||");
}

TEST(TextWriter, CutsARowAtItsLimit) {
    EXPECT_EQ(lineUpTo(10, "%-6s%s\n", "abc", Asterisks{64}), "abc   ****");
    EXPECT_EQ(lineUpTo(10, "%6s%-9s\n", Asterisks{2}, Asterisks{2}), "    ****  ");
    EXPECT_EQ(lineUpTo(4, "100%% of %d", 5), "100%");
    EXPECT_EQ(lineUpTo(0, "%s\n", "abc"), "");
    EXPECT_EQ(lineUpTo(1023, "%s\n", std::string(2000, 'x')), std::string(1023, 'x'));
}

TEST(TextWriter, CutsOnlyTheCallThatHasALimit) {
    std::string both = printed(textFormat, [](Printer & printer) {
        printer.addFrillsUpTo(3, "%s\n", "abcdef");
        printer.addFrillsUpTo(3, "%s\n", "ghijkl");
        printer.addFrills("%s\n", "mnopqr");
    });
    EXPECT_EQ(both, "abcghimnopqr\n");
}

TEST(TextWriter, WritesRowsOfAnyLength) {
    for (std::size_t size : {OutputBuffer::capacity - 1, OutputBuffer::capacity,
                             OutputBuffer::capacity + 1, 5 * OutputBuffer::capacity + 17}) {
        std::string large(size, 'x');
        EXPECT_EQ(line("<%s>\n", large), "<" + large + ">\n");
    }
    for (std::size_t size = OutputBuffer::maxReserve - 40; size < OutputBuffer::maxReserve + 8;
         ++size) {
        std::string const large(size, 'x');
        EXPECT_EQ(line("<%s %5d %-7s>\n", large, 12, "a"), "<" + large + "    12 a      >\n");
    }
    EXPECT_EQ(line("%9999s%9999s%9999s%9999s%9999s%9999s%9999s%9999s", "1", "2", "3", "4", "5", "6",
                   "7", "8")
                  .size(),
              8U * 9999U);
}

} // namespace
} // namespace outfmt::test
