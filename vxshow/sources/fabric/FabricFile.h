#pragma once

#include "vxshow/sources/fabric/Fabric.h"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace vxshow::sources::fabric {

/// A fabric file cannot be read. The text is one line of printable ASCII:
/// `FILE:LINE:COLUMN: KEY: found WHAT, expected WHAT`, `FILE:LINE:COLUMN: WHAT` if it is not
/// TOML, or `FILE: WHAT` if the error is at no place in the file. Lines and columns count from 1,
/// columns in characters; elements of arrays count from 0.
class FabricFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the sources of a fabric from the file `path`, or from standard input if that is "-":
/// TOML with one table `[[source]]` for each, 1 to 4096 of them. Returns them in the order of the
/// file. Where the file does not limit the facts of a source, it can come to `maxFacts`.
/// docs/fabric.md describes the keys. A switch that `--source` takes for another source has a
/// remark.
///
/// Reading is strict, as for a snapshot and for the same reason: a listing that silently lacks
/// what was misspelt is worse than none. Only the file itself is opened. Relative file names in it
/// count from its folder; on standard input, from the current folder. Raises `FabricFileError`.
Fabric readFabricFile(std::string const & path, std::size_t maxFacts = defaultMaxFacts);

} // namespace vxshow::sources::fabric
