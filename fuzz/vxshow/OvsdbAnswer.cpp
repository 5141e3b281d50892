#include "fuzz/Targets.h"
#include "fuzz/harness/Lines.h"
#include "fuzz/vxshow/Answers.h"
#include "vxshow/sources/ovsdb/Database.h"
#include "vxshow/sources/ovsdb/ServerStatus.h"

/// What `ovsdb-client` prints: refused in one line, or facts that can be mounted.
namespace fuzz {

namespace {

template <class Read>
void reads(Read && read) {
    try {
        read();
    } catch (vxshow::sources::AnswerError const & error) {
        checkLine(error.what());
    }
}

} // namespace

void ovsdbAnswer(std::string_view bytes) {
    using namespace vxshow::sources::ovsdb;
    static Request const whole = Request::whole();
    auto const answer = [&] { return vxshow::system::FileBytes::copyOf(bytes); };
    reads([&] { checkAnswer(readDatabase(answer(), whole, {"lab"})); });
    reads([&] { static_cast<void>(logicalSwitchesOf(Vxlan::Vni(5001), answer())); });
    reads([&] { static_cast<void>(readServerStatus(answer())); });
}

} // namespace fuzz
