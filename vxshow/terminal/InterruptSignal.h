#pragma once

/// What Ctrl-C does. Either way "exiting on interrupt" goes to standard output, the exit status
/// is 130, and the program does not wait for a terminal or pipe that accepts no more output. If
/// the program was started with SIGINT ignored, it stays ignored.
namespace vxshow::terminal {

/// From now on an interrupt ends the process at once. For the time before and after the
/// listing: nothing needs cleaning up, and reading the largest state takes seconds.
void exitOnInterrupt();

/// From now on an interrupt asks the library to end the listing, which it does at the end of a
/// line. If that takes too long, the process ends regardless.
void endListingOnInterrupt();

} // namespace vxshow::terminal
