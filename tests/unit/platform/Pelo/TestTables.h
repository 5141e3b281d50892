#pragma once

#include "Pelo/Bytes.h"
#include "Pelo/Reader.h"
#include "Pelo/Writer.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

/// Tables of numbers for the tests in this folder, and ways to damage them.
namespace Pelo::Test {

/// Two numbers that belong together: `twin` follows from `number`, so that halves of two
/// different values never form a valid one.
struct Pair {
    U64 number = 0;
    U64 twin = 0;

    bool operator==(Pair const &) const = default;

    static Pair of(U64 number) { return {number, Vex::hashMix(number)}; }

    bool whole() const { return twin == Vex::hashMix(number); }
};

struct PairSchema {
    using Key = U32;
    using Value = Pair;

    static constexpr std::string_view tag = "Pelo::Test::Pair";
    static constexpr U32 keySize = 4;
    static constexpr U32 valueSize = 16;

    static void encodeKey(U32 key, U8 * out) { writeNumber<4>(out, key); }

    static U32 decodeKey(U8 const * in) { return static_cast<U32>(readNumber<4>(in)); }

    static void encodeValue(Pair const & pair, U8 * out) {
        writeNumber<8>(writeNumber<8>(out, pair.number), pair.twin);
    }

    static Pair decodeValue(U8 const * in) { return {readNumber<8>(in), readNumber<8>(in + 8)}; }
};

/// The same sizes under another tag.
struct OtherTagSchema : PairSchema {
    static constexpr std::string_view tag = "Pelo::Test::Other";
};

/// The same tag with a value that is one byte longer but has slots of the same size.
struct LongerValueSchema : PairSchema {
    static constexpr U32 valueSize = 17;
};

using PairWriter = Writer<PairSchema>;
using PairReader = Reader<PairSchema>;

inline constexpr U64 slotSize = formatOf<PairSchema>.slotSize();

inline PairReader readerOf(PairWriter const & writer) {
    return PairReader::attach(writer.descriptor(), writer.name());
}

/// The raw bytes of a table.
class RawMemory {
public:
    explicit RawMemory(int descriptor) : descriptor_(descriptor) {}

    template <class T = U8>
    T at(U64 offset) const {
        T value{};
        EXPECT_EQ(::pread(descriptor_, &value, sizeof value, static_cast<off_t>(offset)),
                  static_cast<ssize_t>(sizeof value));
        return value;
    }

    template <class T>
    void put(U64 offset, T const & value) const {
        ASSERT_EQ(::pwrite(descriptor_, &value, sizeof value, static_cast<off_t>(offset)),
                  static_cast<ssize_t>(sizeof value));
    }

    /// Flips the bits of `mask` in one byte; a second call undoes it.
    void flip(U64 offset, U8 mask) const { put(offset, static_cast<U8>(at(offset) ^ mask)); }

    std::vector<U8> copy(U64 offset, U64 size) const {
        std::vector<U8> bytes(size);
        EXPECT_EQ(::pread(descriptor_, bytes.data(), size, static_cast<off_t>(offset)),
                  static_cast<ssize_t>(size));
        return bytes;
    }

    void paste(U64 offset, std::vector<U8> const & bytes) const {
        ASSERT_EQ(::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset)),
                  static_cast<ssize_t>(bytes.size()));
    }

private:
    int descriptor_;
};

/// A directory that is removed with its contents.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "pelo.XXXXXX").string();
        EXPECT_NE(::mkdtemp(name.data()), nullptr);
        path_ = name;
    }

    TemporaryDirectory(TemporaryDirectory const &) = delete;
    TemporaryDirectory & operator=(TemporaryDirectory const &) = delete;

    ~TemporaryDirectory() { std::filesystem::remove_all(path_); }

    std::string file(std::string_view name) const { return (path_ / name).string(); }

    std::filesystem::path const & path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// The text of the error that `action` raises, which must be exactly an E; otherwise,
/// what happened instead.
template <class E, class Action>
std::string errorOf(Action && action) {
    try {
        action();
    } catch (E const & error) {
        return typeid(error) == typeid(E) ? error.what() : std::string("another: ") + error.what();
    }
    return "no error";
}

} // namespace Pelo::Test
