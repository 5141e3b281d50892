#include "fuzz/harness/Check.h"

#include <cstdio>
#include <cstdlib>

namespace fuzz {

void check(bool holds, std::string_view sentence) {
    if (!holds) {
        std::fprintf(stderr, "fuzz: %.*s\n", static_cast<int>(sentence.size()), sentence.data());
        std::abort();
    }
}

} // namespace fuzz
