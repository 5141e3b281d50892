#include "vxshow/sources/frr/VtyshOutput.h"

#include "Vex/Errors.h"
#include "vxshow/sources/frr/Conversation.h"
#include "vxshow/system/Reason.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace vxshow::sources::frr {

namespace {

/// The statuses of a shell (POSIX, 2.8.2) for a program that does not exist or cannot be run.
constexpr int statusNotFound = 127;
constexpr int statusNotRun = 126;

/// The status of `ssh` for an error of its own.
constexpr int statusSsh = 255;

/// The most bytes of a quoted line.
constexpr std::size_t longestLine = 300;

std::string shown(std::string_view line) {
    auto const text = line.substr(0, line.find_last_not_of(" \t\r") + 1);
    std::string printable(Vex::printable(text.substr(0, longestLine)));
    return text.size() > longestLine ? printable.append("...") : printable;
}

/// The first line of `text` with `part` in it; "" when there is none.
std::string_view lineWith(std::string_view text, std::string_view part) {
    auto const at = text.find(part);
    if (at == std::string_view::npos) {
        return {};
    }
    auto const first = text.rfind('\n', at);
    auto const line = text.substr(first == std::string_view::npos ? 0 : first + 1);
    return line.substr(0, line.find('\n'));
}

/// All lines but those about configuration files, which are harmless whatever reason they give.
std::string withoutConfiguration(std::string_view text) {
    std::string others;
    while (!text.empty()) {
        auto const line = text.substr(0, text.find('\n'));
        if (!line.starts_with("% Can't open configuration file")) {
            others.append(line).append("\n");
        }
        text = text.substr(std::min(text.size(), line.size() + 1));
    }
    return others;
}

/// The last line that is not blank.
std::string_view lastLine(std::string_view text) {
    text = text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
    auto const before = text.rfind('\n');
    return text.substr(before == std::string_view::npos ? 0 : before + 1);
}

/// Whether vtysh complained about the last command.
bool complains(std::string_view printed) {
    return lastLine(withoutConfiguration(printed)).starts_with("% ");
}

/// Whether the line is a refusal of `sudo` or `doas` to run the command.
bool isRefusedBySudo(std::string_view line) {
    return line.starts_with("sudo: ") || line.starts_with("doas: ") ||
           line.find("not in the sudoers file") != std::string_view::npos ||
           line.find("is not allowed to execute") != std::string_view::npos;
}

/// The reason for a failure: the line, or the status if there is no line.
std::string withStatus(std::string_view kind, std::string_view line, int status) {
    return std::string(kind) + ": " +
           (line.empty() ? "vtysh ended with status " + std::to_string(status) : shown(line));
}

[[noreturn]] void refuse(system::Exited const & exited, std::string const & program) {
    auto const errors = withoutConfiguration(exited.errors);
    auto const unconnected = lineWith(errors, "failed to connect to any daemons");
    auto const forbidden = lineWith(errors, "ermission denied");
    auto const stopped = lineWith(errors, "zebra is not running");
    auto const last = lastLine(errors);
    bool const isNotFound = last.ends_with("command not found");
    if (!unconnected.empty() && !lineWith(errors, "Hint:").empty()) {
        throw Failure("permission: " + shown(unconnected));
    }
    if (!forbidden.empty()) {
        throw Failure("permission: " + shown(forbidden));
    }
    if (isRefusedBySudo(last) && !isNotFound) {
        throw Failure("permission: " + shown(last));
    }
    if (!unconnected.empty() || !stopped.empty()) {
        throw Failure("unreachable: " + shown(stopped.empty() ? unconnected : stopped));
    }
    if (exited.status == statusSsh) {
        throw Failure(withStatus("unreachable", last, exited.status));
    }
    if (isNotFound || exited.status == statusNotFound || exited.status == statusNotRun) {
        throw Failure("no such program: " + shown(last.empty() ? program : last));
    }
    throw Failure(withStatus("broken answer", last, exited.status));
}

} // namespace

system::FileBytes vtyshOutput(system::RunResult answer, VtyshRun const & about) {
    if (auto * const exited = std::get_if<system::Exited>(&answer)) {
        if (exited->status != 0 && !complains(exited->output.text())) {
            refuse(*exited, about.program);
        }
        return std::move(exited->output);
    }
    auto const reason = system::reason(answer, about.program, about.timeLimit);
    if (std::holds_alternative<system::TimeLimitReached>(answer)) {
        throw TimedOut(reason);
    }
    throw Failure(reason);
}

} // namespace vxshow::sources::frr
