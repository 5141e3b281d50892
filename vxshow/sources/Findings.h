#pragma once

#include "vxshow/sources/Subjects.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// What was noticed in a source's content that its listing does not show.
///
/// A source whose text is not validated can hold any number of unusable entries. A line for each
/// would bury the listing; without a line they would pass for absent. So they are counted, and
/// one is given as an example: the least by its text, since rows arrive in no order. What does not
/// concern a listing is not in its warning.
namespace vxshow::sources {

/// Entries of one kind: how many, and one of them as an example.
class Noticed {
public:
    /// Adds one; `what` describes it in printable ASCII, on one line.
    void add(Subjects about, std::string what);

    /// How many are about any of `subjects`.
    std::size_t count(Subjects subjects = Subjects::every()) const noexcept;

    /// The least text that was added about any of `subjects`; "" if there is none.
    std::string first(Subjects subjects = Subjects::every()) const;

private:
    struct Some {
        std::size_t count = 0;
        std::string first = {};
    };

    std::map<Subjects, Some> some_;
};

/// A remark on the source as a whole.
struct Remark {
    Subjects about = Subjects::every();
    std::string text = {}; ///< in printable ASCII, on one line
};

struct Findings {
    std::vector<Remark> remarks = {};
    Noticed leftOut = {};   ///< entries without a usable MAC, address or key: not in the facts
    Noticed ipv6Vteps = {}; ///< entries whose VTEP is IPv6, which listings do not have
    Noticed unplaced = {};  ///< local entries at a VTEP of no switch: listed under the source
    Noticed disputed = {};  ///< IP addresses with several MAC addresses: one of them is shown

    /// What is about any of `subjects`, as one line of printable ASCII, the remarks first; nullopt
    /// if there is nothing to warn of.
    std::optional<std::string> warning(Subjects subjects = Subjects::every()) const;
};

} // namespace vxshow::sources
