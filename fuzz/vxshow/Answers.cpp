#include "fuzz/vxshow/Answers.h"

#include "fuzz/harness/Check.h"
#include "fuzz/harness/Lines.h"
#include "fuzz/vxshow/Listings.h"
#include "vxshow/sources/Merge.h"

namespace fuzz {

using namespace vxshow;

void checkAnswer(sources::Answer const & answer) {
    static Scratch file;
    auto settled = answer.facts;
    settled.settle();
    check(settled == answer.facts, "facts are not settled");
    if (auto const warning = answer.findings.warning()) {
        checkLine(*warning);
    }
    for (auto const role : {sources::Role::switches, sources::Role::evpn, sources::Role::hsc}) {
        sources::Merge merge;
        merge.add(answer.facts, role);
        checkSnapshot(merge.mount(), file);
    }
}

} // namespace fuzz
