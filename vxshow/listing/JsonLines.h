#pragma once

#include "outfmt/OutputBuffer.h"
#include "vxshow/listing/Shown.h"

namespace vxshow::listing {

/// Writes each row as one JSON object on a line of its own: the name of the table as "table", then
/// the columns by their keys. Numbers and VNIs are unsigned numbers, an unknown value is null, and
/// everything else is text.
///
/// Each line is valid JSON whatever bytes a name has. A name that is not UTF-8 has an escape of a
/// backslash, `x` and two hexadecimal digits for each byte that is not.
///
/// Raises `outfmt::SigIntException` on the user's interrupt, and what the buffer raises.
void writeJsonLines(outfmt::OutputBuffer & buffer, Shown const & shown, Walk const & walk);

} // namespace vxshow::listing
