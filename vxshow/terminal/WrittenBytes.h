#pragma once

#include <cstdint>
#include <optional>

namespace vxshow::terminal {

/// Says whether this thread has written anything since the object was made. A writer of a listing
/// does not say how far it came before an interrupt, and a pipe does not either.
class WrittenBytes {
public:
    WrittenBytes();

    /// Whether the thread has written to any descriptor since. True if the system does not say.
    bool any() const;

private:
    std::optional<std::uint64_t> before_;
};

} // namespace vxshow::terminal
