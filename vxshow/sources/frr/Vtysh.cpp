#include "vxshow/sources/frr/Vtysh.h"

#include "vxshow/sources/EndlessValue.h"
#include "vxshow/sources/frr/Conversation.h"
#include "vxshow/sources/frr/VtyshOutput.h"
#include "vxshow/sources/frr/VtyshWords.h"

namespace vxshow::sources::frr {

Answer askVtysh(VtyshCommand const & vtysh, VtepSource const & source,
                state::Selection const & selection, Deadline const & deadline,
                std::size_t outputBytes, std::function<void(std::string_view)> const & received) {
    system::Limits const limits{deadline.end, outputBytes};
    VtyshRun const about{vtysh.words.front(), deadline.limit};
    auto const run = [&](std::vector<std::string> const & commands) {
        EndlessValue watch;
        auto const watched = [&](std::string_view piece) {
            if (watch.takes(piece)) {
                throw Failure(EndlessValue::reason());
            }
            if (received) {
                received(piece);
            }
        };
        return vtyshOutput(system::run(vtyshWords(vtysh, commands), limits, watched), about);
    };
    return converse(run, source, selection, deadline);
}

} // namespace vxshow::sources::frr
