#include "outfmt/Format.h"

#include "Vex/Name.h"
#include "Vex/String.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

// Formats that must not compile are tested by compiling them (see CMakeLists.txt); here
// the same check runs at run time, where its result can be read.
namespace outfmt {
namespace {

using enum FormatError;

struct Address {
    static constexpr std::size_t maxTextLength = 15;

    char * writeTo(char * to) const noexcept { return to; }
};

struct ThrowingAddress {
    [[maybe_unused]] static constexpr std::size_t maxTextLength = 15;

    char * writeTo(char * to) const { return to; }
};

enum Color { red };

static_assert(checkFormat<>("") == none);
static_assert(checkFormat<>("plain text, 100%% of it\n") == none);
static_assert(checkFormat<int, unsigned, char, char const *>("%d %u %c %s") == none);
static_assert(checkFormat<char const *>("%-29s") == none);
static_assert(checkFormat<char[5]>("%-46.46s") == none);

static_assert(checkFormat<std::string>("%s") == none);
static_assert(checkFormat<std::string_view>("%s") == none);
static_assert(checkFormat<Vex::String>("%s") == none);
static_assert(checkFormat<Vex::Name>("%s") == none);
static_assert(checkFormat<char *>("%s") == none);
static_assert(checkFormat<Address>("%s") == none);
static_assert(checkFormat<ThrowingAddress>("%s") == wrongArgumentType);
static_assert(checkFormat<int>("%s") == wrongArgumentType);
static_assert(checkFormat<char>("%s") == wrongArgumentType);
static_assert(checkFormat<std::nullptr_t>("%s") == wrongArgumentType);
static_assert(checkFormat<void *>("%s") == wrongArgumentType);
static_assert(checkFormat<char8_t const *>("%s") == wrongArgumentType);

static_assert(checkFormat<signed char>("%d") == none);
static_assert(checkFormat<short>("%d") == none);
static_assert(checkFormat<std::int64_t>("%d") == none);
static_assert(checkFormat<long long>("%d") == none);
static_assert(checkFormat<unsigned>("%d") == wrongArgumentType);
static_assert(checkFormat<std::uint8_t>("%d") == wrongArgumentType);
static_assert(checkFormat<bool>("%d") == wrongArgumentType);
static_assert(checkFormat<char>("%d") == wrongArgumentType);
static_assert(checkFormat<wchar_t>("%d") == wrongArgumentType);
static_assert(checkFormat<double>("%d") == wrongArgumentType);
static_assert(checkFormat<Color>("%d") == wrongArgumentType);
static_assert(checkFormat<char const *>("%d") == wrongArgumentType);

static_assert(checkFormat<std::uint8_t>("%u") == none);
static_assert(checkFormat<std::uint64_t>("%u") == none);
static_assert(checkFormat<int>("%u") == wrongArgumentType);
static_assert(checkFormat<bool>("%u") == wrongArgumentType);
static_assert(checkFormat<char32_t>("%u") == wrongArgumentType);

static_assert(checkFormat<char>("%-3c") == none);
static_assert(checkFormat<int>("%c") == wrongArgumentType);
static_assert(checkFormat<unsigned char>("%c") == wrongArgumentType);

static_assert(checkFormat<>("%d") == missingArgument);
static_assert(checkFormat<int>("%d %d") == missingArgument);
static_assert(checkFormat<int>("") == surplusArgument);
static_assert(checkFormat<int, int>("%d%%d") == surplusArgument);

static_assert(checkFormat<>("%") == incompleteConversion);
static_assert(checkFormat<int>("%d %") == incompleteConversion);
static_assert(checkFormat<int>("%-5") == incompleteConversion);
static_assert(checkFormat<char const *>("%.") == incompleteConversion);

static_assert(checkFormat<int>("%x") == unknownConversion);
static_assert(checkFormat<double>("%f") == unknownConversion);
static_assert(checkFormat<int *>("%n") == unknownConversion);
static_assert(checkFormat<long>("%ld") == unknownConversion);
static_assert(checkFormat<int, int>("%*d") == unknownConversion);
static_assert(checkFormat<int>("%05d") == unknownConversion);
static_assert(checkFormat<int>("%+d") == unknownConversion);
static_assert(checkFormat<int>("%--5d") == unknownConversion);
static_assert(checkFormat<>("%5%") == unknownConversion);
static_assert(checkFormat<>("%x") == unknownConversion);

static_assert(checkFormat<int>("%.3d") == precisionNotAllowed);
static_assert(checkFormat<unsigned>("%.3u") == precisionNotAllowed);
static_assert(checkFormat<char>("%.1c") == precisionNotAllowed);

static_assert(checkFormat<char const *>("%9999.9999s") == none);
static_assert(checkFormat<char const *>("%10000s") == numberTooLarge);
static_assert(checkFormat<char const *>("%.10000s") == numberTooLarge);
static_assert(checkFormat<char const *>("%99999999999999999999s") == numberTooLarge);

TEST(Format, IsAtMost65535BytesLong) {
    EXPECT_EQ(checkFormat<>(std::string(65535, '-')), none);
    EXPECT_EQ(checkFormat<>(std::string(65536, '-')), formatTooLong);
}

TEST(Format, IsCheckedTheSameAtRunTime) {
    EXPECT_EQ((checkFormat<char const *, int>("%-17s %5d\n")), none);
    EXPECT_EQ((checkFormat<int, char const *>("%-17s %5d\n")), wrongArgumentType);
}

} // namespace
} // namespace outfmt
