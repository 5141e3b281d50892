#pragma once

#include "vxshow/sources/Failure.h"
#include "vxshow/sources/frr/Documents.h"
#include "vxshow/sources/frr/VtyshCommand.h"

#include <cstddef>
#include <functional>
#include <string_view>

namespace vxshow::sources::frr {

/// Asks the zebra that `vtysh` reaches for what is selected. `received` is called with the bytes
/// of each piece of an answer as it arrives; a run that prints more than `outputBytes` is ended.
/// Raises `Failure`.
Answer askVtysh(VtyshCommand const & vtysh, VtepSource const & source,
                state::Selection const & selection, Deadline const & deadline,
                std::size_t outputBytes,
                std::function<void(std::string_view)> const & received = {});

} // namespace vxshow::sources::frr
