#pragma once

#include "Trace/Sink.h"

namespace [[gnu::visibility("default")]] Trace {

/// A sink that writes one line per record to `fd`, in one write:
///
///     LEVEL FILE:LINE FUNCTION: TEXT
///
/// FILE is a base name. Names that came from the network stand in the text, so control
/// characters (C0, DEL and C1) and bytes that are not UTF-8 are written as \xNN: a record
/// is one line, and no terminal obeys it. What cannot be written is dropped. The
/// descriptor stays the caller's.
Sink descriptorSink(int fd);

} // namespace Trace
