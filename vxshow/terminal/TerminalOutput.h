#pragma once

#include "vxshow/system/OwnedDescriptor.h"

#include <thread>

namespace vxshow::terminal {

/// The way of a listing to a terminal. The names in it come from snapshots and from the network,
/// and a terminal would obey what control characters they have: on this way those become question
/// marks. Ends of lines stay, and so do tabs.
///
/// A pipe of one page leads to a thread that writes, so that not much is on the way when an
/// interrupt ends the listing.
class TerminalOutput {
public:
    /// Raises `std::system_error` where the system has no pipe or thread left.
    explicit TerminalOutput(int terminal);

    TerminalOutput(TerminalOutput const &) = delete;
    TerminalOutput & operator=(TerminalOutput const &) = delete;

    /// As `finish`, but that what the terminal did not take is lost silently.
    ~TerminalOutput();

    /// Where to write.
    int descriptor() const noexcept { return writer_.number(); }

    /// Waits until everything is written; nothing may be written then. Raises
    /// `std::system_error` when the terminal did not take all of it.
    void finish();

private:
    void pass() noexcept;

    int terminal_;
    int error_ = 0; ///< of the system, when the terminal took no more
    system::OwnedDescriptor reader_;
    system::OwnedDescriptor writer_;
    std::thread passing_;
};

} // namespace vxshow::terminal
