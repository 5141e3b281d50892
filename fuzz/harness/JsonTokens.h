#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace fuzz {

/// The tokens of a text that is more or less JSON: strings with their quotes, marks, blanks, and
/// everything else up to the next of these. Together they are the whole text.
std::vector<std::string_view> jsonTokens(std::string_view text);

/// Where the value that starts with the token at `first` ends: past its closing bracket, or past
/// the token itself. A member's name takes its value with it.
std::size_t pastJsonValue(std::vector<std::string_view> const & tokens, std::size_t first);

} // namespace fuzz
