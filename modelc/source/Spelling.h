#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace modelc {

/// "; did you mean 'NAME'?" with the known name that is closest to `written`; empty if none
/// is close enough. Up to a third of the letters can differ, or one in a word of two.
std::string didYouMean(std::string_view written, std::vector<std::string> const & known);

} // namespace modelc
