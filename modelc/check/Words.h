#pragma once

#include <string_view>

namespace modelc {

/// Whether the word starts with an upper-case letter. Type names do, attribute and argument
/// names do not, so a key in brackets is recognizable as a type or an attribute.
bool startsUpper(std::string_view word) noexcept;

/// Whether the word is a C++ keyword, which generated code cannot use as a name.
bool isCppKeyword(std::string_view word) noexcept;

} // namespace modelc
