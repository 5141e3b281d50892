#pragma once

#include <cstddef>
#include <optional>
#include <string>

/// What was noticed of a source's content that its listing does not show.
///
/// A source whose text nobody checks may hold any number of entries that are none; a line for
/// each would bury the listing, and no line at all would let them pass for absent. So they are
/// counted, and the first one is told: the least by its text, since rows come in no order.
namespace vxshow::sources {

/// Entries of one kind: how many, and one of them as an example.
class Noticed {
public:
    /// Adds one; `what` tells it in printable ASCII, on one line.
    void add(std::string what);

    std::size_t count() const noexcept { return count_; }

    /// The least text that was added; "" when there was none.
    std::string const & first() const noexcept { return first_; }

private:
    std::size_t count_ = 0;
    std::string first_;
};

struct Findings {
    /// What is to be said of the source as a whole, in printable ASCII, on one line.
    std::optional<std::string> remark;
    Noticed leftOut;  ///< entries without a usable MAC, address or key: not in the state
    Noticed unplaced; ///< local entries at a VTEP of no switch: they stand under the source
    Noticed disputed; ///< IP addresses with several MAC addresses: one of those is shown

    /// The one line of warning, in printable ASCII, the remark first; nothing when there is
    /// nothing to warn of.
    std::optional<std::string> warning() const;
};

} // namespace vxshow::sources
