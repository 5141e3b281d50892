#pragma once

#include "outfmt/OutputBuffer.h"
#include "vxshow/listing/Shown.h"

namespace vxshow::listing {

/// Writes the rows as CSV (RFC 4180): a header of the columns' keys, then a line for each row, with
/// CR LF after each; on a terminal, LF.
///
/// A name with a comma, a quotation mark or a line end in it is quoted, and its bytes are written
/// as they are. An unknown value is empty, and an empty name is `""`. VNIs are decimal, and MAC
/// addresses have colons.
///
/// Raises `outfmt::SigIntException` on the user's interrupt, and what the buffer raises.
void writeCsv(outfmt::OutputBuffer & buffer, Shown const & shown, Walk const & walk);

} // namespace vxshow::listing
