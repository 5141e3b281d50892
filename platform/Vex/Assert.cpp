#include "Vex/Assert.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace [[gnu::visibility("default")]] Vex {

void assertionFailed(char const * expression, char const * file, int line,
                     char const * function) noexcept {
    char const * slash = std::strrchr(file, '/');
    char const * baseName = slash ? slash + 1 : file;
    static_cast<void>(std::fprintf(stderr, "%s:%d: %s: assertion '%s' failed\n", baseName, line,
                                   function, expression));
    std::abort();
}

} // namespace Vex
