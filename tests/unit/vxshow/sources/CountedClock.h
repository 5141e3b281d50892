#pragma once

#include "vxshow/sources/Deadline.h"

#include <cstddef>

/// A clock that stands still until it has been looked at a given number of times. So tests of
/// deadlines count looks, and do not depend on the speed of the machine.
namespace vxshow::test {

class CountedClock {
public:
    /// A deadline that is over after `looks` looks at this clock, from now on. There is one clock
    /// for each thread.
    static sources::Deadline overAfter(std::size_t looks);

    /// How often it was looked at since then.
    static std::size_t looks();

    /// To be called for each small piece of work, such as a comparison.
    static void work();

    /// The most pieces of work between two looks since then, and after the last one.
    static std::size_t mostWork();
};

} // namespace vxshow::test
