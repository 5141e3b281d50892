#pragma once

#include "vxshow/sources/Source.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace vxshow::sources::fabric {

/// A fabric file that cannot be read. Its text is one line of printable ASCII:
/// `FILE:LINE:COLUMN: KEY: found WHAT, expected WHAT`, `FILE:LINE:COLUMN: WHAT` for what is no
/// TOML, or `FILE: WHAT` where no place in the file is to blame. Lines and columns count from 1,
/// columns in characters; elements of arrays count from 0.
class FabricFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads which sources a fabric has from the file `path`, or from standard input when that is
/// "-": TOML with one table `[[source]]` for each, 1 to 4096 of them, in the order of the file.
/// docs/fabric.md describes its keys.
///
/// Reading is strict, as that of a snapshot is and for the same reason: a listing that silently
/// lacks what was misspelt is worse than none. Nothing is opened but the file itself. File names
/// in it that are relative count from its folder; on standard input from the current one. Raises
/// `FabricFileError`.
std::vector<Source> readFabricFile(std::string const & path);

} // namespace vxshow::sources::fabric
