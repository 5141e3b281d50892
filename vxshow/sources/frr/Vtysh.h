#pragma once

#include "vxshow/sources/Failure.h"
#include "vxshow/sources/frr/Documents.h"
#include "vxshow/sources/frr/VtyshCommand.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <string_view>

namespace vxshow::sources::frr {

/// Asks the zebra that `vtysh` reaches for what is selected, until `end`. `received` is called
/// with the bytes of each piece of an answer as it comes; a run that prints more than
/// `outputBytes` is ended. Raises `Failure`.
Answer askVtysh(VtyshCommand const & vtysh, VtepSource const & source,
                state::Selection const & selection, std::chrono::steady_clock::time_point end,
                std::size_t outputBytes,
                std::function<void(std::string_view)> const & received = {});

} // namespace vxshow::sources::frr
