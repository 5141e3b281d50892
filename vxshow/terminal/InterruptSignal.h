#pragma once

/// What Ctrl-C does to the program. Either way "exiting on interrupt" is said on standard
/// output, the exit status is 130, and a terminal or pipe that takes nothing more is not
/// waited for. A program that was started with the signal ignored leaves it so.
namespace vxshow::terminal {

/// From here on the interrupt ends the process on the spot: while the state is read, and
/// after the listing. There is nothing to put in order, and reading the largest state
/// takes seconds.
void interruptEndsTheProcess();

/// From here on the interrupt asks the library to end, which it does at a line end.
void interruptEndsTheListing();

} // namespace vxshow::terminal
