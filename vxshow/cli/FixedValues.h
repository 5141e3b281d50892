#pragma once

#include <CLI/Option.hpp>

#include <string>
#include <vector>

/// The words that an option takes, where these are a fixed set or the most common values. They are
/// kept with the option, so that whatever reads the command tree finds them.
namespace vxshow::cli {

/// Declares the words. Does not check values: that, and the text of a refusal, is the option's.
/// The words contain no line breaks.
void declareValues(CLI::Option & option, std::vector<std::string> const & values);

/// The declared words, in their order; none if there is no such declaration.
std::vector<std::string> declaredValues(CLI::Option & option);

} // namespace vxshow::cli
