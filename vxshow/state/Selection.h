#pragma once

#include "Nolt/EthAddr.h"
#include "Vxlan/VniOrNone.h"

#include <string>
#include <string_view>

namespace vxshow::state {

/// The part of the state that a command shows; everything but the details by default.
///
/// A source of state reads and checks all that it has, but need not build what is not selected:
/// in a fabric with a thousand VNIs, a listing of one needs one. State that is mounted beyond
/// the selection changes no listing, so a source can mount more than is selected.
struct Selection {
    bool received = true;      ///< `Mount::received`
    bool advertised = true;    ///< `Mount::advertised`
    bool routers = true;       ///< `Mount::routers`
    bool macTables = true;     ///< of each VNI: unicast, multipath, flood
    bool arpTables = true;     ///< of each VNI
    bool details = false;      ///< `Mount::details`, as far as sources report them anyway
    bool macDetails = false;   ///< those of MAC addresses, too, which take a source longer
    Vxlan::VniOrNone vni = {}; ///< none: every VNI
    Nolt::EthAddr mac = {};    ///< the one MAC address of MAC tables; zero: every one
    std::string source = {};   ///< the source's name as in the filter; empty: every source

    /// Whether the entry `name` of a per-VNI directory is selected. The name can be any text, and
    /// each command reads a VNI from it in its own way; only the decimal number of another VNI is
    /// not selected.
    bool takesEntry(std::string_view name) const;

    /// Whether the switch `name` is selected. The filter "all" selects every switch.
    bool takesSwitch(std::string_view name) const {
        return source.empty() || source == "all" || source == name;
    }
};

} // namespace vxshow::state
