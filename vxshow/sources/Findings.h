#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// What was noticed in a source's content that its listing does not show.
///
/// A source whose text is not validated can hold any number of unusable entries. A line for each
/// would bury the listing; without a line they would pass for absent. So they are counted, and
/// one is given as an example: the least by its text, since rows arrive in no order.
namespace vxshow::sources {

/// Entries of one kind: how many, and one of them as an example.
class Noticed {
public:
    /// Adds one; `what` describes it in printable ASCII, on one line.
    void add(std::string what);

    std::size_t count() const noexcept { return count_; }

    /// The least text that was added; "" if none was.
    std::string const & first() const noexcept { return first_; }

private:
    std::size_t count_ = 0;
    std::string first_;
};

struct Findings {
    /// A remark on the source as a whole, in printable ASCII, on one line.
    std::optional<std::string> remark;
    Noticed leftOut;   ///< entries without a usable MAC, address or key: not in the facts
    Noticed ipv6Vteps; ///< entries whose VTEP is IPv6, which listings do not have
    Noticed unplaced;  ///< local entries at a VTEP of no switch: listed under the source
    Noticed disputed;  ///< IP addresses with several MAC addresses: one of them is shown

    /// The warning as one line of printable ASCII, the remark first; nullopt if there is nothing
    /// to warn of.
    std::optional<std::string> warning() const;
};

} // namespace vxshow::sources
