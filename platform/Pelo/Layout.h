#pragma once

#include "Pelo/Checksum.h"

#include <array>
#include <cstddef>
#include <string_view>

/// The memory layout of a table: a header, then slots of one size.
///
/// Everything consists of 64-bit words in the byte order of the host, because a processor
/// reads and writes a word as a whole: a reader in another process sees each word either
/// before or after a change, never in between. On a host of the other byte order the
/// magic number reads as another number, so such a table is refused.
///
///     words  0-15   what never changes: kind and size of the table, and a checksum of it
///     word   16     the generation, odd while the writer is changing something
///     words 17-23   counts, which change with the entries, and a checksum of them
///     from 24       slots: a checksum, then key, value and state as bytes, zero-padded
///
/// The words that never change include a seed, which the writer draws for each table and
/// which determines where keys are stored (Slot.h).
///
/// Every byte is checked except the upper seven of the generation, where a flipped bit
/// looks like a change by the writer: readers read again and find everything as it was.
namespace [[gnu::visibility("default")]] Pelo {

/// "PeloTabl" in a hexdump.
inline constexpr U64 magic = 0x6c6261546f6c6550U;
inline constexpr U32 formatVersion = 2;

/// The kind of a table: the tag, so that a table of hosts is not read as one of flood
/// entries, and the sizes of keys and values.
struct Format {
    /// At most `maxTagLength` bytes, with static storage duration.
    std::string_view tag;
    /// Bytes of an encoded key, at least 1.
    U32 keySize;
    /// Bytes of an encoded value.
    U32 valueSize;

    static constexpr std::size_t maxTagLength = 64;

    /// Words of key, value and state.
    constexpr U32 recordWords() const noexcept { return (1 + keySize + valueSize + 7) / 8; }

    /// Words of a slot.
    constexpr U32 slotWords() const noexcept { return 1 + recordWords(); }

    /// Bytes of a slot.
    constexpr U32 slotSize() const noexcept { return slotWords() * 8; }
};

/// Positions in words from the start.
inline constexpr std::size_t fixedWords = 16;
inline constexpr std::size_t generationWord = 16;
inline constexpr std::size_t countsFirstWord = 17;
inline constexpr std::size_t countsWords = 7;
inline constexpr std::size_t headerWords = 24;
inline constexpr std::size_t headerSize = headerWords * 8;

/// A table has fewer slots than this: the place of a key is computed from 32 bits.
inline constexpr U64 maxCapacity = U64{1} << 32;

/// Bytes of a table with `capacity` slots.
constexpr U64 regionSize(Format const & format, U64 capacity) noexcept {
    return headerSize + capacity * format.slotSize();
}

using FixedHeader = std::array<U64, fixedWords>;
using CountsWords = std::array<U64, countsWords>;

/// The part of the header that never changes, for a table of `capacity` slots whose places
/// follow from `seed`, which is not 0.
FixedHeader makeHeader(Format const & format, U64 capacity, U64 seed) noexcept;

/// The same with a seed that is drawn for it.
FixedHeader makeHeader(Format const & format, U64 capacity) noexcept;

/// Reads the number of slots out of `header`. Raises `CorruptionDetectedException` if its
/// checksum is wrong, the table cannot have `fileSize` bytes or the seed is 0, and `TableError` if
/// it is not a table, or its version, tag, or key or value size differs from `format`.
U64 checkHeader(FixedHeader const & header, Format const & format, U64 fileSize,
                std::string_view table);

/// The seed in `header`.
U64 seedOf(FixedHeader const & header) noexcept;

/// What a table records about its entries.
struct Counts {
    U64 live = 0;
    /// Slots whose key was erased but keeps its place.
    U64 dead = 0;
    /// Whether the writer has moved to a bigger table, so that this one no longer
    /// changes.
    bool replaced = false;

    bool operator==(Counts const &) const = default;
};

CountsWords makeCounts(Counts const & counts) noexcept;

/// Raises `CorruptionDetectedException` if the words are not a result of `makeCounts`.
Counts checkCounts(CountsWords const & words, U64 capacity, std::string_view table);

} // namespace Pelo
