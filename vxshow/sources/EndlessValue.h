#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vxshow::sources {

/// Notices early that what a client prints is no answer but blanks, one string or one number
/// without an end. In the JSON of all sources, quotes are never far apart.
class EndlessValue {
public:
    /// The most bytes between two quotes: 64 MiB.
    static constexpr std::size_t longest = std::size_t{64} << 20;

    /// Takes the next piece; returns whether there are more bytes than that without a quote.
    bool takes(std::string_view piece) noexcept {
        auto const quote = piece.rfind('"');
        bytes_ = quote == std::string_view::npos ? bytes_ + piece.size() : piece.size() - quote - 1;
        return bytes_ > longest;
    }

    /// The failure of such a client.
    static std::string reason() {
        return "broken answer: more than " + std::to_string(longest) +
               " bytes without the end of a value";
    }

private:
    std::size_t bytes_ = 0; ///< since the last quote
};

} // namespace vxshow::sources
