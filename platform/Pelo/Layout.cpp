#include "Pelo/Layout.h"

#include "Pelo/Errors.h"
#include "Pelo/Text.h"
#include "Vex/KeyedHash.h"

#include <cstring>
#include <span>
#include <string>

namespace [[gnu::visibility("default")]] Pelo {

namespace {

constexpr std::size_t magicPlace = 0;
constexpr std::size_t versionPlace = 1;
constexpr std::size_t capacityPlace = 2;
constexpr std::size_t slotSizePlace = 3;
constexpr std::size_t entrySizesPlace = 4;
constexpr std::size_t tagPlace = 5;
constexpr std::size_t seedPlace = 13;
constexpr std::size_t regionSizePlace = 14;
constexpr std::size_t checksumPlace = 15;
static_assert((seedPlace - tagPlace) * 8 == Format::maxTagLength);

// Different from each other and from every slot number, so that one part of the header is
// never accepted in the place of another.
constexpr U64 fixedSeed = ~U64{0};
constexpr U64 countsSeed = ~U64{1};

constexpr std::size_t livePlace = 0;
constexpr std::size_t deadPlace = 1;
constexpr std::size_t replacedPlace = 2;

template <std::size_t count>
U64 sumOf(U64 seed, std::array<U64, count> const & words) noexcept {
    return checksum(seed, std::span(words).template first<count - 1>());
}

U64 entrySizes(Format const & format) noexcept {
    return U64{format.keySize} << 32 | format.valueSize;
}

std::string_view tagOf(FixedHeader const & header) noexcept {
    auto const * text = reinterpret_cast<char const *>(&header[tagPlace]);
    return {text, strnlen(text, Format::maxTagLength)};
}

void checkKind(FixedHeader const & header, Format const & format, std::string_view table) {
    if (tagOf(header) != format.tag) {
        throw TableError(table, "holds " + Vex::quoted(tagOf(header)) + ", expected " +
                                    Vex::quoted(format.tag));
    }
    if (header[entrySizesPlace] != entrySizes(format) ||
        header[slotSizePlace] != format.slotSize()) {
        auto const sizes = [](U64 entry, U64 slot) {
            return "keys of " + std::to_string(entry >> 32) + ", values of " +
                   std::to_string(static_cast<U32>(entry)) + " and slots of " +
                   std::to_string(slot) + " bytes";
        };
        throw TableError(table, "has " + sizes(header[entrySizesPlace], header[slotSizePlace]) +
                                    ", expected " + sizes(entrySizes(format), format.slotSize()));
    }
}

} // namespace

FixedHeader makeHeader(Format const & format, U64 capacity, U64 seed) noexcept {
    FixedHeader header{};
    header[magicPlace] = magic;
    header[versionPlace] = formatVersion;
    header[capacityPlace] = capacity;
    header[slotSizePlace] = format.slotSize();
    header[entrySizesPlace] = entrySizes(format);
    std::memcpy(&header[tagPlace], format.tag.data(), format.tag.size());
    header[seedPlace] = seed;
    header[regionSizePlace] = regionSize(format, capacity);
    header[checksumPlace] = sumOf(fixedSeed, header);
    return header;
}

FixedHeader makeHeader(Format const & format, U64 capacity) noexcept {
    return makeHeader(format, capacity, Vex::drawHashSeed());
}

U64 seedOf(FixedHeader const & header) noexcept {
    return header[seedPlace];
}

U64 checkHeader(FixedHeader const & header, Format const & format, U64 fileSize,
                std::string_view table) {
    if (header[magicPlace] != magic) {
        throw TableError(table, "is no table: starts with " + hexText(header[magicPlace]) +
                                    ", expected " + hexText(magic));
    }
    if (header[versionPlace] != formatVersion) {
        throw TableError(table, "has format version " + std::to_string(header[versionPlace]) +
                                    ", expected " + std::to_string(formatVersion));
    }
    if (header[checksumPlace] != sumOf(fixedSeed, header)) {
        throw CorruptionDetectedException(table, "header",
                                          "checksum " + hexText(header[checksumPlace]),
                                          hexText(sumOf(fixedSeed, header)));
    }
    checkKind(header, format, table);
    U64 const capacity = header[capacityPlace];
    if (capacity == 0 || capacity >= maxCapacity) {
        throw CorruptionDetectedException(table, "header", std::to_string(capacity) + " slots",
                                          "1 to " + std::to_string(maxCapacity - 1));
    }
    if (header[seedPlace] == 0) {
        throw CorruptionDetectedException(table, "header", "a seed of 0", "a seed that was drawn");
    }
    U64 const size = regionSize(format, capacity);
    if (header[regionSizePlace] != size || fileSize != size) {
        throw CorruptionDetectedException(table, "header",
                                          std::to_string(fileSize) + " bytes for " +
                                              std::to_string(capacity) + " slots",
                                          std::to_string(size));
    }
    return capacity;
}

CountsWords makeCounts(Counts const & counts) noexcept {
    CountsWords words{};
    words[livePlace] = counts.live;
    words[deadPlace] = counts.dead;
    words[replacedPlace] = counts.replaced ? 1 : 0;
    words.back() = sumOf(countsSeed, words);
    return words;
}

Counts checkCounts(CountsWords const & words, U64 capacity, std::string_view table) {
    if (words.back() != sumOf(countsSeed, words)) {
        throw CorruptionDetectedException(table, "counts", "checksum " + hexText(words.back()),
                                          hexText(sumOf(countsSeed, words)));
    }
    Counts const counts{words[livePlace], words[deadPlace], words[replacedPlace] != 0};
    if (counts.live >= capacity || counts.dead >= capacity - counts.live) {
        throw CorruptionDetectedException(
            table, "counts", std::to_string(counts.live + counts.dead) + " slots in use",
            "fewer than " + std::to_string(capacity));
    }
    return counts;
}

} // namespace Pelo
