#pragma once

#include <string_view>

namespace fuzz {

/// Ends the process with one line, "fuzz: SENTENCE", unless `holds`. `sentence` is the violated
/// property in the program's own words, never text of the input.
void check(bool holds, std::string_view sentence);

} // namespace fuzz
