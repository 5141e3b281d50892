#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace bench::floor {

/// An output buffer: the caller appends text, and one call writes each mebibyte.
class Output {
public:
    Output() : buffer_(size) {}

    /// Room for one row.
    char * room() {
        if (at_ + maxRow > size) {
            flush();
        }
        return buffer_.data() + at_;
    }

    /// Sets the end of the text that was written into the room.
    void end(char const * end) { at_ = static_cast<std::size_t>(end - buffer_.data()); }

    void put(std::string_view text);

    /// Ends the process if the output cannot be written.
    void flush();

private:
    static constexpr std::size_t size = std::size_t{1} << 20U;
    static constexpr std::size_t maxRow = 4096;

    std::vector<char> buffer_;
    std::size_t at_ = 0;
};

inline char * append(char * out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

/// The decimal text of `number`.
char * putNumber(char * out, std::uint32_t number);

/// A dotted quad.
char * putIp(char * out, std::uint32_t ip);

/// 001c.730a.0b0c
char * putDisplayMac(char * out, std::uint64_t mac);

/// 00:1c:73:0a:0b:0c
char * putMac(char * out, std::uint64_t mac);

} // namespace bench::floor
