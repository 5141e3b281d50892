#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace [[gnu::visibility("default")]] outfmt {

/// How bytes reach a descriptor without the user's interrupt ever waiting for the reader.
///
/// A flag that is tested before write() leaves a gap: the signal may come between the
/// test and the call, which then waits for a reader that has stopped reading, with no
/// further signal to end it. Making the descriptor non-blocking would close the gap, but
/// that mode belongs to everyone who shares the open file, such as the shell on the same
/// terminal. So the waiting is moved out of write() and into poll(), in steps of 50 ms
/// with a look at the flag between them:
///
/// - sockets and pipes are written to with a "do not wait" for the one call, and a pipe
///   with no more than it takes whole, so that a text ends at a line end;
/// - where the kernel has none (terminals, pipes before Linux 6.5), a write follows only
///   when poll() reports room, and is PIPE_BUF bytes at most: a pipe then takes it whole.
///   A terminal may still wait for room for the rest of those bytes. A signal ends that
///   wait, unless it falls into the gap just then; and a terminal that is held reports no
///   room in the first place;
/// - a regular file does not wait for a reader.
///
/// SIGPIPE is left as the process has it. The descriptor is the caller's: it is neither
/// closed nor changed.
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
