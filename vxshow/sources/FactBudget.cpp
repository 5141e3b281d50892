#include "vxshow/sources/FactBudget.h"

#include "vxshow/sources/Failure.h"

#include <string>

namespace vxshow::sources {

void FactBudget::refuse() const {
    throw TooManyFacts("too large: more than " + std::to_string(most_) +
                       (most_ == 1 ? " fact" : " facts") +
                       "; max_facts in the fabric file, or --max-facts, allows more, and --vni "
                       "asks for less");
}

} // namespace vxshow::sources
