#pragma once

#include "vxshow/sources/Facts.h"
#include "vxshow/sources/Findings.h"
#include "vxshow/sources/ovsdb/Rows.h"

#include <string>
#include <string_view>

namespace vxshow::sources::ovsdb {

/// Adds the contents of a row of `Logical_Router` to a router. An invalid address, prefix or VNI is
/// counted and left out.
class LogicalRouter {
public:
    /// All of them outlive this.
    LogicalRouter(std::string const & name, RouterFacts & router, Noticed & leftOut) noexcept
        : name_(name), router_(router), leftOut_(leftOut) {}

    /// A pair of `switch_binding`: an address with its prefix length, and its logical switch.
    void port(std::string const & address, Rows::LogicalSwitch const & in);

    /// A pair of `static_routes`.
    void route(std::string const & prefix, std::string const & nexthop);

private:
    void leaveOut(std::string_view column, std::string const & found, std::string_view expected);

    std::string const & name_;
    RouterFacts & router_;
    Noticed & leftOut_;
};

} // namespace vxshow::sources::ovsdb
