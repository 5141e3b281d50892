#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace modelc {

/// "; did you mean 'NAME'?" with the known name that is nearest to `written`, or nothing
/// when none is near enough: a third of its letters may differ, in a word of two one of them.
std::string didYouMean(std::string_view written, std::vector<std::string> const & known);

} // namespace modelc
