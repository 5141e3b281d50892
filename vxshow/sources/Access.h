#pragma once

#include "vxshow/sources/Answer.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/state/Counters.h"
#include "vxshow/state/Selection.h"

#include <cstddef>

namespace vxshow::sources {

struct Source;

/// The most bytes that one run of a client can print: 2 GiB. It is ended when it prints more, and
/// the source has failed. Ten million MAC addresses in a database, with some 170 bytes
/// for a row, are 1.7 GB.
inline constexpr std::size_t maxClientOutput = std::size_t{1} << 31;

/// How one source is reached and asked. Each kind of source has its own.
class Access {
public:
    virtual ~Access() = default;

    /// Asks `source`, whose access this is, for what is selected; the answer can hold more.
    /// Raises `Failure`. Several threads can call this at once.
    virtual Answer ask(Source const & source, state::Selection const & selection,
                       Deadline const & deadline) const = 0;

    /// The counters that such a source keeps.
    virtual state::Counters counters() const noexcept { return {}; }
};

} // namespace vxshow::sources
