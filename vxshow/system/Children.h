#pragma once

/// The programs that run, all at once: what has to be done about them when this process ends.
/// They are in sessions of their own, so a terminal's signals do not reach them.
namespace vxshow::system {

/// Sends SIGKILL to each program that runs and to its group; from the start of the call on no
/// program is started any more. Each `run` that is under way, or called later, answers
/// `Interrupted`. May be called from a signal handler, by any number of threads, and again.
///
/// What a program has started in a session of its own is not reached, nor what runs as a user
/// whom this one may not signal.
void killAllChildren() noexcept;

/// From here on SIGHUP, SIGQUIT and SIGTERM kill the programs first and then end this process
/// as they always did, so that whoever waits for it sees the signal. One that was ignored at
/// the start of this process stays ignored.
///
/// The interrupt is not among them: it does more (see vxshow/Interrupt.h). Nor is SIGKILL:
/// the system kills each program with the thread that runs it, but nothing that the program
/// has started.
void endingSignalsKillChildren();

} // namespace vxshow::system
