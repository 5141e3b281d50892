#pragma once

#include <cstddef>

/// Counts the memory that `new` gives out for objects and containers, but not for arrays. A test
/// program with this file has its own `operator new`. Counted bytes, unlike those that the system
/// reports, are the same in each run.
namespace vxshow::test {

/// The most bytes that were in use at the same time since this was made, beyond those in use then.
/// There is one at a time.
class PeakMemory {
public:
    PeakMemory() noexcept;

    std::size_t bytes() const noexcept;

private:
    std::size_t before_;
};

} // namespace vxshow::test
