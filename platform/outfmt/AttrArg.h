#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace [[gnu::visibility("default")]] outfmt {

/// The kinds of attributes, by the codes that they have always had.
enum class AttrKind : std::uint8_t { integer32 = 0, string = 1, boolean = 2, integer64 = 5 };

/// An attribute as it is handed to the printer: made by the getArg() of an attribute
/// info, and valid until that info is changed or destroyed.
struct AttrArg {
    std::string_view key; ///< empty for a bare list element
    AttrKind kind;
    unsigned mode;           ///< of the printer that it was made for
    std::int64_t number = 0; ///< of the integer kinds; a boolean's 0 or 1 in JSON mode
    std::string_view text{}; ///< of a string; a boolean's "True" or "False" in text mode
    /// The key with its quotes and the colon, and a string's text with its quotes, each as JSON
    /// has it. Empty where that takes escapes, or was too long to be kept.
    std::string_view quotedKey{};
    std::string_view quotedText{};
    bool isQuoted = false; ///< whether those hold all of the attribute that is text

    /// The most bytes that they have together.
    static constexpr std::size_t longestQuoted = 144;
};

} // namespace outfmt
