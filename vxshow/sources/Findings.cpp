#include "vxshow/sources/Findings.h"

#include <utility>

namespace vxshow::sources {

namespace {

void appendTo(std::string & line, Noticed const & noticed, char const * one, char const * several) {
    if (noticed.count() == 0) {
        return;
    }
    bool const single = noticed.count() == 1;
    line.append(line.empty() ? "" : "; ").append(std::to_string(noticed.count()));
    line.append(" ").append(single ? one : several).append(single ? ": " : ", the first: ");
    line.append(noticed.first());
}

} // namespace

void Noticed::add(std::string what) {
    if (count_ == 0 || what < first_) {
        first_ = std::move(what);
    }
    ++count_;
}

std::optional<std::string> Findings::warning() const {
    auto line = remark.value_or("");
    appendTo(line, leftOut, "entry left out", "entries left out");
    appendTo(line, ipv6Vteps, "entry left out, its VTEP is IPv6",
             "entries left out, their VTEP is IPv6");
    appendTo(line, unplaced, "local entry at a VTEP of no switch",
             "local entries at a VTEP of no switch");
    appendTo(line, disputed, "IP address with several MAC addresses",
             "IP addresses with several MAC addresses");
    return line.empty() ? std::nullopt : std::optional(std::move(line));
}

} // namespace vxshow::sources
