#include "vxshow/mount/live/DeadlineWatch.h"

#include "vxshow/mount/live/SourceFailure.h"
#include "vxshow/process/Reason.h"

namespace vxshow {

void DeadlineWatch::look() {
    left_ = stepsBetweenLooks;
    if (deadline_.isOver()) {
        throw TimeOver(process::reason(process::TimeLimit{}, "", deadline_.limit));
    }
}

} // namespace vxshow
