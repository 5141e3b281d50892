#pragma once

/// Ending the running programs with this process. They are in sessions of their own, so signals
/// from the terminal do not reach them.
namespace vxshow::system {

/// Sends SIGKILL to each running program and its process group, and ends the program that has the
/// terminal together with this process, if there is one (`ForegroundProgram`). From the start of
/// the call no program can be started: each `run` in progress, and each later one, returns
/// `Interrupted`. Async-signal-safe and thread-safe; can be called repeatedly.
///
/// Not reached: processes that a program has started in another session, and processes of a user
/// that this one has no permission to signal.
void killAllChildren() noexcept;

/// From now on SIGHUP, SIGQUIT and SIGTERM first kill the running programs and then end this
/// process with their default action, so that its parent sees the signal. A signal that was
/// ignored when this process started stays ignored.
///
/// SIGINT is handled elsewhere (vxshow/terminal/InterruptSignal.h). SIGKILL cannot be handled: the
/// system then kills each program together with the thread that runs it, but not the processes
/// that the program has started.
void killChildrenOnTermination();

} // namespace vxshow::system
