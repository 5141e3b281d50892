#pragma once

#include <string>
#include <string_view>

namespace modelc {

/// The text as a C++ string literal, quotes included.
std::string quotedForCpp(std::string_view text);

} // namespace modelc
