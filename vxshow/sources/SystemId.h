#pragma once

#include "Nolt/EthAddr.h"
#include "vxshow/text/TomlField.h"

namespace vxshow::sources {

/// Reads the system identifier of a switch: an Ethernet address in any of its forms. Raises
/// `TomlRefusal`.
Nolt::EthAddr readSystemId(text::TomlField const & field);

} // namespace vxshow::sources
