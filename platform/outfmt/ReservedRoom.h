#pragma once

#include "outfmt/OutputBuffer.h"
#include "outfmt/ShortCopy.h"

#include <cstddef>
#include <cstring>
#include <string_view>

namespace outfmt::detail {

/// Room that is known to be large enough, as returned by OutputBuffer::reserve(). What is
/// added must not exceed what was reserved; even an empty fill overwrites up to `slack`
/// bytes.
class ReservedRoom {
public:
    explicit ReservedRoom(char * begin) noexcept : at_(begin) {}

    char * end() const noexcept { return at_; }

    [[gnu::always_inline]] void append(std::string_view text) noexcept {
        at_ = copyShort(at_, text.data(), text.size());
    }

    void append(char character) noexcept { *at_++ = character; }

    /// Overwrites the slack rather than branching on the count.
    [[gnu::always_inline]] void fill(char character, std::size_t count) noexcept {
        std::memset(at_, character, OutputBuffer::slack);
        if (count > OutputBuffer::slack) [[unlikely]] {
            std::memset(at_, character, count);
        }
        at_ += count;
    }

    char * reserve(std::size_t /* count */) noexcept { return at_; }

    void commit(std::size_t count) noexcept { at_ += count; }

private:
    char * at_;
};

} // namespace outfmt::detail
