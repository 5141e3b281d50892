#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace [[gnu::visibility("default")]] outfmt {

/// The kinds of attributes. The codes are fixed.
enum class AttrKind : std::uint8_t { integer32 = 0, string = 1, boolean = 2, integer64 = 5 };

/// An attribute as it is passed to the printer: made by the getArg() of an attribute
/// info, and valid until that info is changed or destroyed.
struct AttrArg {
    std::string_view key; ///< empty for a bare list element
    AttrKind kind;
    unsigned mode;           ///< of the printer that it is for
    std::int64_t number = 0; ///< for the integer kinds; 0 or 1 for a boolean in JSON mode
    std::string_view text{}; ///< for a string; "True" or "False" for a boolean in text mode
    /// The JSON form of the key with quotes and colon, and of a string's text with quotes.
    /// Empty if it needs escapes or is too long to keep.
    std::string_view quotedKey{};
    std::string_view quotedText{};
    bool isQuoted = false; ///< whether these hold all text of the attribute

    /// The maximum size of both together, in bytes.
    static constexpr std::size_t longestQuoted = 144;
};

} // namespace outfmt
