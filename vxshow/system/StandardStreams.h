#pragma once

namespace vxshow::system {

/// Opens /dev/null on those of the descriptors 0 to 2 that this process was started without. The
/// next file that it opens would otherwise take such a number, and what is meant for standard
/// output or standard error would be written into that file. Call this before anything is opened.
///
/// Reading from a standard input that was closed, and writing to a standard output that was
/// closed, still fails with EBADF. What is written to a standard error that was closed is
/// discarded.
///
/// Returns false if a descriptor is closed and /dev/null cannot be opened.
[[nodiscard]] bool openClosedStandardStreams() noexcept;

} // namespace vxshow::system
