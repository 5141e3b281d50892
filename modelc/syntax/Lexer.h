#pragma once

#include "modelc/syntax/Token.h"

#include <string_view>
#include <vector>

namespace modelc {

/// Splits the text of a model file into tokens; the last one is the end of the file. Throws
/// `SyntaxError` for a byte that cannot start a token and for an unterminated string.
std::vector<Token> tokenize(std::string_view source);

} // namespace modelc
