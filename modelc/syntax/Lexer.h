#pragma once

#include "modelc/syntax/Token.h"

#include <string_view>
#include <vector>

namespace modelc {

/// Cuts the text of a model file into tokens; the last one is the end of the file. Raises
/// `SyntaxError` for a byte that starts no token and for a string that does not end.
std::vector<Token> tokens(std::string_view source);

} // namespace modelc
