#pragma once

#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"
#include "vxshow/system/FileBytes.h"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace vxshow::state::snapshot {

/// A snapshot cannot be read. The message is one line of printable ASCII: `FILE:LINE:COLUMN:
/// MEMBERS: found WHAT, expected WHAT`, or `FILE: WHAT` if the fault is not at a place in the file.
/// Lines and columns count from 1, columns in bytes.
class SnapshotError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads the snapshot in the file `path`, or from standard input if that is "-", and mounts the
/// part of it that is selected.
///
/// Reading is strict: a document with a member, a number, an address or a byte that is not
/// understood is refused as a whole, since a listing that silently lacks what was misspelt is worse
/// than none. That holds for what is not selected, too. Raises `SnapshotError`.
///
/// The document is in memory once, as it is, up to `maxSize` bytes, which is at most
/// `FileBytes::longest`; a longer one is refused. Its values go straight into the tables,
/// and the text is freed before this returns.
Mount readSnapshot(std::string const & path, Selection const & selection = {},
                   std::size_t maxSize = system::FileBytes::longest);

} // namespace vxshow::state::snapshot
