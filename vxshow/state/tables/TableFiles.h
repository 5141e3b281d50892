#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/state/Mount.h"

#include <stdexcept>
#include <string>

/// The EVPN tables of a state as files that other processes read: those of the source "EVPN",
/// received and advertised, one file each.
///
///     received-hosts  received-flood  advertised-hosts  advertised-flood
///
/// A file has the format of the platform's shared tables, in the byte order of the host, and
/// is meant for readers on the same host. An absent table has no file.
namespace vxshow::state::tables {

/// The files cannot be published or mounted. The message is one line of printable ASCII that starts
/// with the path.
class TableFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Publishes the tables of `mount` in `directory`, which is created if it is absent.
///
/// All tables are written first, in a hidden folder, and then each replaces its file in one
/// step: a process that has mapped the old file keeps the old table, and no process sees half
/// of the new one. The four are replaced one after the other. The file of an absent table is
/// removed.
///
/// Raises `TableFileError`, and `outfmt::SigIntException` on the user's interrupt. No file has
/// been replaced then, unless replacing itself failed.
void publishTables(Mount const & mount, std::string const & directory);

/// Mounts the tables in `directory`; nothing else is mounted. Each is copied into memory of this
/// process and read once from end to end, so that a damaged file is refused here.
///
/// Later changes to a file do not reach the mount, even if another process cuts it short in
/// place: a walk over a mapped file would end with SIGBUS then.
///
/// Raises `TableFileError` also for a directory without any of the files, which is more
/// likely the wrong one than a state without EVPN.
Mount mountTables(std::string const & directory);

} // namespace vxshow::state::tables
