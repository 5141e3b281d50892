#include "bench/floor/Output.h"

#include <array>
#include <charconv>
#include <unistd.h>

namespace bench::floor {

namespace {

/// The text of a byte in decimal.
struct Decimal {
    char digits[3];
    unsigned char length;
};

constexpr auto decimals = [] {
    std::array<Decimal, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        auto & entry = table[byte];
        unsigned char length = 0;
        for (unsigned unit = 100; unit != 0; unit /= 10) {
            if (byte >= unit || unit == 1) {
                entry.digits[length++] = static_cast<char>('0' + byte / unit % 10);
            }
        }
        entry.length = length;
    }
    return table;
}();

constexpr auto hexPairs = [] {
    std::array<std::array<char, 2>, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        table[byte] = {"0123456789abcdef"[byte >> 4U], "0123456789abcdef"[byte & 0xFU]};
    }
    return table;
}();

char * putHex(char * out, std::uint64_t byte) {
    std::memcpy(out, hexPairs[byte & 0xFFU].data(), 2);
    return out + 2;
}

} // namespace

void Output::put(std::string_view text) {
    end(append(room(), text));
}

void Output::flush() {
    for (std::size_t done = 0; done < at_;) {
        ssize_t const n = write(STDOUT_FILENO, buffer_.data() + done, at_ - done);
        if (n < 0) {
            _exit(1);
        }
        done += static_cast<std::size_t>(n);
    }
    at_ = 0;
}

char * putNumber(char * out, std::uint32_t number) {
    return std::to_chars(out, out + 10, number).ptr;
}

char * putIp(char * out, std::uint32_t ip) {
    for (unsigned shift = 24;; shift -= 8) {
        auto const & byte = decimals[ip >> shift & 0xFFU];
        std::memcpy(out, byte.digits, 3);
        out += byte.length;
        if (shift == 0) {
            return out;
        }
        *out++ = '.';
    }
}

char * putDisplayMac(char * out, std::uint64_t mac) {
    for (unsigned shift = 40;; shift -= 16) {
        out = putHex(putHex(out, mac >> shift), mac >> (shift - 8));
        if (shift == 8) {
            return out;
        }
        *out++ = '.';
    }
}

char * putMac(char * out, std::uint64_t mac) {
    for (unsigned shift = 40;; shift -= 8) {
        out = putHex(out, mac >> shift);
        if (shift == 0) {
            return out;
        }
        *out++ = ':';
    }
}

} // namespace bench::floor
