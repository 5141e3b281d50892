#pragma once

#include "vxshow/sources/Kind.h"
#include "vxshow/sources/Source.h"

#include <string>

namespace vxshow::sources::ovsdb {

/// "hardware_vtep": databases of that schema, which `ovsdb-client` reads.
///
/// The names of its key files always contain a slash, so that none of them is one of the words,
/// such as `none`, that Open vSwitch takes for something other than a file.
Kind kind();

/// The source that `--ovsdb REMOTES` names: a switch, called as its remotes are written, with a
/// blank for each tab. Raises `RemoteError`.
Source sourceAt(std::string const & remotes);

} // namespace vxshow::sources::ovsdb
