#include "vxshow/sources/DeadlineWatch.h"

#include "vxshow/sources/Failure.h"
#include "vxshow/system/Reason.h"

#include <string>

namespace vxshow::sources {

void DeadlineWatch::look() {
    left_ = stepsBetweenLooks;
    if (deadline_.isOver()) {
        throw TimedOut("time limit: " + std::string(missed_) + " within " +
                       system::secondsText(deadline_.limit) + " s");
    }
}

} // namespace vxshow::sources
