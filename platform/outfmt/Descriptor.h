#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace [[gnu::visibility("default")]] outfmt {

/// Writes bytes to a descriptor so that the user's interrupt never waits for the reader.
///
/// Testing a flag before write() leaves a gap: the signal can arrive between the test and
/// the call, which then waits for a reader that has stopped reading, with no further
/// signal to end it. Making the descriptor non-blocking would close the gap, but that
/// mode is shared by all users of the open file, such as the shell on the same terminal.
/// So the waiting is moved out of write() and into poll(), in steps of 50 ms, with a test
/// of the flag after each:
///
/// - sockets, and pipes where the kernel allows it, are written to with a "do not wait"
///   flag for the one call; a pipe gets no more than it takes without splitting, so that
///   the text ends at a line end;
/// - terminals, and pipes before Linux 6.5, have no such flag: a write follows only when
///   poll() reports room, and has PIPE_BUF bytes at most, which a pipe then takes whole.
///   A terminal can still wait for room for the rest of those bytes. A signal ends that
///   wait, unless it arrives in the gap at that moment; but a stopped terminal reports no
///   room in the first place;
/// - a regular file does not wait for a reader.
///
/// SIGPIPE is left as the process has set it. The caller owns the descriptor: it is
/// neither closed nor changed.
class Descriptor {
public:
    explicit Descriptor(int fd) noexcept;

    /// Writes at least one of `bytes` (not empty) and returns how many. Waits as long as
    /// it takes; a signal alone does not end the wait.
    ///
    /// Throws SigIntException when it has to wait, or is interrupted, and the interrupt
    /// flag is set; WriteError for every failure but EINTR and EAGAIN.
    std::size_t writeSome(std::string_view bytes);

private:
    enum class Kind : std::uint8_t { file, socket, pipe, waiting };

    static Kind kindOf(int fd) noexcept;
    std::ptrdiff_t attempt(std::string_view bytes);
    std::ptrdiff_t attemptOnPipe(std::string_view bytes);
    void awaitRoom() const;

    int fd_;
    Kind kind_;
};

} // namespace outfmt
