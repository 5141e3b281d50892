#pragma once

#include "Trace/Sink.h"

namespace [[gnu::visibility("default")]] Trace {

/// A sink that writes one line per record to `fd`, in one write:
///
///     LEVEL FILE:LINE FUNCTION: TEXT
///
/// FILE is a base name. TEXT can contain names from the network, so control characters
/// (C0, DEL and C1) and bytes that are not UTF-8 are written as \xNN: a record is one
/// line and cannot control a terminal. What cannot be written is dropped. The caller
/// still owns the descriptor.
Sink descriptorSink(int fd);

} // namespace Trace
