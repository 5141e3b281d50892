#pragma once

#include "vxshow/sources/Answer.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/state/Selection.h"

namespace vxshow::sources {

struct Source;

/// How one source is reached and asked. Each kind of source has its own.
class Access {
public:
    virtual ~Access() = default;

    /// Asks `source`, whose access this is, for what is selected; the answer can hold more.
    /// Raises `Failure`. Several threads can call this at once.
    virtual Answer ask(Source const & source, state::Selection const & selection,
                       Deadline const & deadline) const = 0;
};

} // namespace vxshow::sources
