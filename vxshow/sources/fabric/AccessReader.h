#pragma once

#include "vxshow/sources/frr/VtyshCommand.h"
#include "vxshow/sources/ovsdb/DatabaseAddress.h"
#include "vxshow/text/TomlField.h"

#include <string>

/// How a source is reached, read from its table in a fabric file. All raise `TomlRefusal`.
namespace vxshow::sources::fabric {

/// The keys `remotes`, `private_key`, `certificate` and `ca_certificate` of `source`. Relative
/// file names count from `folder`, which ends in a slash; the names that come out have a slash
/// in them in any case, so that none is one of the words, such as `none`, that Open vSwitch
/// takes for something else than a file.
ovsdb::DatabaseAddress readDatabaseAddress(text::TomlField const & source,
                                           std::string const & folder);

/// The keys `command`, `path_space` and `remote_shell` of `source`.
frr::VtyshCommand readVtyshCommand(text::TomlField const & source);

} // namespace vxshow::sources::fabric
