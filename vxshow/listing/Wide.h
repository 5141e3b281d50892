#pragma once

#include "outfmt/OutputBuffer.h"
#include "vxshow/listing/Shown.h"

namespace vxshow::listing {

/// Writes the rows in aligned columns, two blanks apart, below their titles. A column is as wide as
/// its widest cell, in columns of a terminal; numbers are aligned to the right. Blanks never follow
/// the last column.
///
/// On a surface that is too narrow, each row and the header continue on further lines, which are
/// indented. A line ends only between cells.
///
/// In names, bytes that are not UTF-8, control characters and invisible characters are written as
/// escapes: a backslash, `x` and two hexadecimal digits for each byte. So a row is always one line,
/// or the lines that it is continued on. An unknown value is `-`, and an empty name is `""`.
///
/// Walks twice. Raises `outfmt::SigIntException` on the user's interrupt, and what the buffer
/// raises.
void writeWide(outfmt::OutputBuffer & buffer, Shown const & shown, Walk const & walk);

} // namespace vxshow::listing
