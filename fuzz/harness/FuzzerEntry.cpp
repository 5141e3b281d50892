#include "fuzz/Targets.h"

#include <cstddef>
#include <cstdint>

/// Called by libFuzzer with each input. FUZZ_TARGET is the function of this program's target.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * bytes, std::size_t size) {
    fuzz::FUZZ_TARGET({reinterpret_cast<char const *>(bytes), size});
    return 0;
}
