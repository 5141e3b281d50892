#pragma once

#include "Nolt/EthAddr.h"
#include "Vxlan/VniOrNone.h"

#include <string>
#include <string_view>

namespace vxshow::state {

/// What of the state a command is going to look at; at first everything.
///
/// A source of state reads and checks all that it has, but need not build what is not
/// selected: of a fabric with a thousand VNIs, a listing of one needs one. Whatever is
/// mounted beyond the selection changes no listing, so a source may select less sharply
/// than it is asked to.
struct Selection {
    bool received = true;      ///< `Mount::received`
    bool advertised = true;    ///< `Mount::advertised`
    bool routers = true;       ///< `Mount::routers`
    bool macTables = true;     ///< of each VNI: unicast, multipath, flood
    bool arpTables = true;     ///< of each VNI
    Vxlan::VniOrNone vni = {}; ///< none: every VNI
    Nolt::EthAddr mac = {};    ///< of MAC tables, only entries of this one; zero: every one
    std::string source = {};   ///< the source's name as it is filtered by; empty: every one

    bool takesVni(Vxlan::Vni candidate) const { return vni.isNone() || vni == candidate; }

    /// Whether the entry of a per-VNI directory is taken. Its name may be any text, of which
    /// each command makes a VNI in its own way; only another VNI's plain number is none.
    bool takesEntry(std::string_view name) const;

    /// Whether a switch of that name is taken: by the filter "all", too.
    bool takesSwitch(std::string_view name) const {
        return source.empty() || source == "all" || source == name;
    }
};

} // namespace vxshow::state
