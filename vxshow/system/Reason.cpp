#include "vxshow/system/Reason.h"

#include "Vex/Errors.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>

namespace vxshow::system {

namespace {

constexpr std::size_t longestLine = 300;
constexpr std::string_view blanks = " \t\r\v\f\n";

std::string withoutZerosAtTheEnd(std::string number) {
    number.erase(number.find_last_not_of('0') + 1);
    return number;
}

/// The first line that is not blank, without leading and trailing blanks.
std::string firstLine(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    text = text.substr(0, text.find('\n'));
    text = text.substr(0, text.find_last_not_of(blanks) + 1);
    auto line = std::string(Vex::printable(text.substr(0, longestLine)));
    return text.size() > longestLine ? line.append("...") : line;
}

class Reason {
public:
    Reason(std::string const & program, std::chrono::milliseconds limit)
        : program_(Vex::printable(program)), limit_(limit) {}

    std::string operator()(Exited const & exited) const {
        auto line = firstLine(exited.errors);
        return line.empty() ? program_ + " ended with exit status " + std::to_string(exited.status)
                            : line;
    }

    std::string operator()(KilledBySignal const & killed) const {
        auto const line =
            "broken answer: " + program_ + " was killed by signal " + std::to_string(killed.signal);
        char const * const name = ::sigdescr_np(killed.signal);
        return name ? line + " (" + name + ")" : line;
    }

    std::string operator()(TimeLimitReached const &) const {
        return "time limit: no answer within " + secondsText(limit_) + " s";
    }

    std::string operator()(OutputLimitReached const & limit) const {
        return "broken answer: more than " + std::to_string(limit.bytes) + " bytes";
    }

    std::string operator()(NotStarted const & notStarted) const {
        switch (notStarted.error) {
        case ENOENT:
            return "no such program: " + program_ +
                   (notStarted.onlyInRelativeEntry
                        ? " (found only in an empty or relative entry of PATH, which root does not "
                          "use)"
                        : "");
        case EACCES:
            return "permission: " + program_ + " cannot be run";
        case ENOTDIR:
        case ENAMETOOLONG:
        case ELOOP:
        case ENOEXEC:
            return "no such program: " + cannotBeRun(notStarted.error);
        default:
            return "unreachable: " + cannotBeRun(notStarted.error);
        }
    }

    std::string operator()(Interrupted const &) const { return "interrupted"; }

private:
    std::string cannotBeRun(int error) const {
        return program_ + " cannot be run: " + std::generic_category().message(error);
    }

    std::string program_;
    std::chrono::milliseconds limit_;
};

} // namespace

std::string secondsText(std::chrono::milliseconds time) {
    auto const whole = std::to_string(time.count() / 1000);
    auto const rest = time.count() % 1000;
    return rest == 0 ? whole
                     : whole + '.' + withoutZerosAtTheEnd(std::to_string(1000 + rest)).substr(1);
}

std::string reason(RunResult const & result, std::string const & program,
                   std::chrono::milliseconds limit) {
    return std::visit(Reason(program, limit), result);
}

} // namespace vxshow::system
