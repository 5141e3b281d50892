#include "vxshow/sources/frr/Conversation.h"

#include "vxshow/sources/frr/ReadDocument.h"
#include "vxshow/sources/frr/VtyshWords.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace vxshow::sources::frr {

namespace {

/// A remote shell gets all words as one argument, for which the limit of Linux is 128 KiB: half of
/// that, since quoting lengthens them.
constexpr std::size_t mostCommandBytes = 65536;

/// What the option `-c` and quotes add to a command.
constexpr std::size_t bytesBeside = 10;

using Questions = std::vector<Question>;

/// Asks as many questions from `next` on as one run takes, at least one; returns the next.
Questions::const_iterator askSome(RunVtysh const & run, Questions::const_iterator next,
                                  Questions::const_iterator end, Collector & join) {
    std::vector<std::string> commands;
    std::size_t bytes = 0;
    for (auto one = next; one != end; ++one) {
        auto command = one->command();
        bytes += command.size() + bytesBeside;
        if (bytes > mostCommandBytes && !commands.empty()) {
            break;
        }
        commands.push_back(std::move(command));
    }
    auto printed = run(commands);
    auto const lastComplaint =
        (next + static_cast<std::ptrdiff_t>(commands.size()) - 1)->isOptional()
            ? LastComplaint::isAccepted
            : LastComplaint::isRefused;
    for (auto const answer : vtyshAnswers(printed.text(), commands, lastComplaint)) {
        // The padding overwrites the line of the next command, which is no longer needed.
        readDocument(*next++, printed.padded(answer), join);
    }
    return next;
}

void ask(RunVtysh const & run, Questions const & questions, Collector & join) {
    for (auto next = questions.begin(); next != questions.end();) {
        next = askSome(run, next, questions.end(), join);
    }
}

Answer askOnce(RunVtysh const & run, VtepSource const & source, state::Selection const & selection,
               Deadline const & deadline) {
    Collector join(selection, deadline, source.maxFacts);
    ask(run, firstQuestions(selection, source.role), join);
    auto const further = join.further();
    if (!further.empty()) {
        ask(run, further, join);
    }
    return join.finished(source);
}

constexpr std::size_t longestVersion = 32;

bool isVersionCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '.' ||
           c == '-' || c == '_' || c == '+' || c == '~';
}

/// "FRR 8.4.4", from the banner that every version prints, "FRRouting 8.4.4 (leaf1) on …".
std::string versionOf(RunVtysh const & run) {
    constexpr std::string_view name = "FRRouting ";
    constexpr std::string_view unknown = "FRR of unknown version";
    std::vector<std::string> const commands{"show version"};
    try {
        auto const printed = run(commands);
        auto const banner = vtyshAnswers(printed.text(), commands).front();
        if (banner.starts_with(name)) {
            auto const rest = banner.substr(name.size(), longestVersion);
            auto const * const end = std::find_if_not(rest.begin(), rest.end(), isVersionCharacter);
            return end == rest.begin() ? std::string(unknown)
                                       : "FRR " + std::string(rest.begin(), end);
        }
    } catch (std::runtime_error const &) {
        // The answer that is not understood matters, not why the version is unknown.
    }
    return std::string(unknown);
}

} // namespace

Answer converse(RunVtysh const & run, VtepSource const & source, state::Selection const & selection,
                Deadline const & deadline) {
    std::optional<Answer> answer;
    try {
        for (unsigned attempt = 0; attempt < maxAttempts && !(answer && answer->fits); ++attempt) {
            answer = askOnce(run, source, selection, deadline);
        }
    } catch (UnknownShape const & error) {
        throw Failure(versionOf(run) + ": " + error.what() +
                      ": this version's answer is not understood");
    } catch (AnswerError const & error) {
        throw Failure(std::string("broken answer: ") + error.what());
    } catch (TimedOut const &) {
        if (!answer) {
            throw;
        }
    }
    return std::move(*answer);
}

} // namespace vxshow::sources::frr
