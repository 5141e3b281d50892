#pragma once

#include <cstddef>
#include <cstring>

/// Copies of a few bytes. Table cells, keys and addresses are so short that calling memcpy
/// or memset takes longer than the copy. A copy of a size known to the compiler is a move or
/// two, so an unknown length is covered by two such copies that overlap.
namespace outfmt::detail {

template <std::size_t size>
[[gnu::always_inline]] inline void copyBothEnds(char * to, char const * from,
                                                std::size_t count) noexcept {
    std::memcpy(to, from, size);
    std::memcpy(to + count - size, from + count - size, size);
}

/// Copies `count` bytes and returns the end of the copy. The two must not overlap.
[[gnu::always_inline]] inline char * copyShort(char * to, char const * from,
                                               std::size_t count) noexcept {
    if (__builtin_constant_p(count) || count > 32) {
        std::memcpy(to, from, count);
    } else if (count >= 16) {
        copyBothEnds<16>(to, from, count);
    } else if (count >= 8) {
        copyBothEnds<8>(to, from, count);
    } else if (count >= 4) {
        copyBothEnds<4>(to, from, count);
    } else if (count >= 2) {
        copyBothEnds<2>(to, from, count);
    } else if (count == 1) {
        *to = *from;
    }
    return to + count;
}

} // namespace outfmt::detail
