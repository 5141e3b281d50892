#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fuzz {

/// Takes decisions from the front of an input. A used-up input answers 0 and "", so every input
/// is valid, and one that is cut short decides the same up to there.
class Input {
public:
    explicit Input(std::string_view bytes) noexcept : rest_(bytes) {}

    bool empty() const noexcept { return rest_.empty(); }

    /// The bytes that are not taken yet.
    std::string_view rest() const noexcept { return rest_; }

    std::uint8_t byte() noexcept {
        if (rest_.empty()) {
            return 0;
        }
        auto const first = static_cast<std::uint8_t>(rest_[0]);
        rest_.remove_prefix(1);
        return first;
    }

    /// A number from 0 to `bound` - 1; `bound` is from 1 to 256.
    unsigned below(unsigned bound) noexcept { return byte() % bound; }

    bool flag() noexcept { return (byte() & 1) != 0; }

    std::uint16_t word() noexcept {
        auto const high = byte();
        return static_cast<std::uint16_t>(high << 8 | byte());
    }

    std::uint32_t number() noexcept {
        auto const high = word();
        return static_cast<std::uint32_t>(high) << 16 | word();
    }

    /// The next bytes, at most `most` (up to 255) of them: a byte with the length, then the bytes.
    std::string_view text(unsigned most) noexcept {
        auto const length = std::min<std::size_t>(below(most + 1), rest_.size());
        auto const taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }

    /// The bytes up to `separator`, which is taken, too, or to the end.
    std::string_view upTo(char separator) noexcept {
        auto const length = std::min(rest_.find(separator), rest_.size());
        auto const taken = rest_.substr(0, length);
        rest_.remove_prefix(std::min(length + 1, rest_.size()));
        return taken;
    }

private:
    std::string_view rest_;
};

} // namespace fuzz
