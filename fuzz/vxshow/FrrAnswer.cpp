#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Lines.h"
#include "fuzz/vxshow/Answers.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/sources/frr/Conversation.h"

#include <algorithm>

/// What `vtysh` prints: refused in one line, or facts that can be mounted.
///
/// An input is the answers to the commands, in their order, separated by lines `---`; what is
/// missing is empty. If it starts with `#`, it is all that vtysh prints in each run; with `@`, they
/// are the answers to questions about VNI 10 alone, and with `!` about one MAC address in it.
namespace fuzz {

namespace {

constexpr std::string_view separator = "\n---\n";

class Answers {
public:
    explicit Answers(std::string_view bytes) : bytes_(bytes), rest_(bytes) {}

    std::string printed(std::vector<std::string> const & commands) {
        if (bytes_.starts_with('#')) {
            return std::string(bytes_.substr(1));
        }
        std::string text;
        for (auto const & command : commands) {
            text.append("leaf1# ").append(command).append("\n").append(next()).append("\n");
        }
        return text;
    }

private:
    std::string_view next() {
        auto const length = std::min(rest_.find(separator), rest_.size());
        auto const taken = rest_.substr(0, length);
        rest_.remove_prefix(std::min(length + separator.size(), rest_.size()));
        return taken;
    }

    std::string_view bytes_;
    std::string_view rest_;
};

} // namespace

void frrAnswer(std::string_view bytes) {
    using namespace vxshow::sources;
    vxshow::state::Selection selection;
    if (bytes.starts_with('@') || bytes.starts_with('!')) {
        selection.routers = false;
        selection.vni = Vxlan::Vni(10);
        selection.mac = Nolt::EthAddr::ofValue(bytes[0] == '!' ? 0x020010000303 : 0);
        bytes.remove_prefix(1);
    }
    Answers answers(bytes);
    auto const run = [&](std::vector<std::string> const & commands) {
        return vxshow::system::FileBytes::copyOf(answers.printed(commands));
    };
    try {
        checkAnswer(frr::converse(run, {"leaf1"}, selection));
    } catch (Failure const & failure) {
        checkLine(failure.what());
    }
}

} // namespace fuzz
