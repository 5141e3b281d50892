#pragma once

#include <string_view>

namespace modelc {

/// Types start with a capital letter, attributes and arguments with a small one: so a key
/// in brackets tells by itself whether it is a type or an attribute.
bool startsUpper(std::string_view word) noexcept;

/// Whether C++ keeps the word for itself, so that nothing generated can bear it as a name.
bool isCppKeyword(std::string_view word) noexcept;

} // namespace modelc
