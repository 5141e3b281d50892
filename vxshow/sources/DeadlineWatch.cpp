#include "vxshow/sources/DeadlineWatch.h"

#include "vxshow/sources/Failure.h"
#include "vxshow/system/Reason.h"
#include "vxshow/system/Run.h"

namespace vxshow::sources {

void DeadlineWatch::look() {
    left_ = stepsBetweenLooks;
    if (deadline_.isOver()) {
        throw TimedOut(system::reason(system::TimeLimitReached{}, "", deadline_.limit));
    }
}

} // namespace vxshow::sources
