#pragma once

namespace vxshow {

/// What Ctrl-C does to the program.
///
/// While the state is read, and after the listing, it ends the process on the spot: there
/// is nothing to put in order, and reading the largest state takes seconds. While the
/// library renders, it sets the library's interrupt flag, so that the listing ends at a
/// line end. Either way "exiting on interrupt" is said on standard output and the exit
/// status is 130. A program that was started with the signal ignored leaves it so.
class InterruptHandling {
public:
    /// Takes the signal over, in the first of the two ways.
    InterruptHandling();

    /// From here on the library is asked to end, until `rendered`.
    void rendering();

    /// True when the user interrupted the rendering.
    bool rendered();
};

} // namespace vxshow
