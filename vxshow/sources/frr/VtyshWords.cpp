#include "vxshow/sources/frr/VtyshWords.h"

#include "vxshow/sources/AnswerError.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/text/Quoting.h"

#include <optional>

namespace vxshow::sources::frr {

namespace {

/// Quotes a word for a shell: within single quotes, only their end is special (POSIX, 2.2.2).
std::string shellQuoted(std::string_view word) {
    std::string text = "'";
    for (char const c : word) {
        if (c == '\'') {
            text.append("'\\''");
        } else {
            text.push_back(c);
        }
    }
    return text.append("'");
}

/// A line of the output, by its positions; `end` is before the newline.
struct Line {
    std::size_t first;
    std::size_t end;
};

/// Whether a line ends at `at`. A terminal between us and `vtysh` writes CRLF.
bool isLineEnd(std::string_view printed, std::size_t at) {
    return printed[at] == '\n' || printed.substr(at).starts_with("\r\n");
}

/// The next line that ends in `#` and the command. `position` is the start of a line.
std::optional<Line> echoOf(std::string_view printed, std::size_t position,
                           std::string const & command) {
    auto const mark = "# " + command;
    for (auto at = printed.find(mark, position); at != std::string_view::npos;
         at = printed.find(mark, at + 1)) {
        // The end is checked first: to search for the start of a long line is expensive.
        auto const end = at + mark.size();
        if (end == printed.size() || isLineEnd(printed, end)) {
            auto const before = printed.substr(position, at - position).rfind('\n');
            return Line{before == std::string_view::npos ? position : position + before + 1, end};
        }
    }
    return std::nullopt;
}

std::string_view firstLine(std::string_view text) {
    return text.substr(0, text.find_first_of("\r\n"));
}

/// What `vtysh` prints after as much of an answer as it got.
bool isCutOff(std::string_view answer) {
    auto const end = answer.find_last_not_of(" \r\n");
    return answer.substr(0, end == std::string_view::npos ? 0 : end + 1)
        .ends_with("closing connection to zebra because of an I/O error!");
}

[[noreturn]] void refuseWithoutLine(std::string const & command, std::string const & found) {
    throw AnswerError(command + ": found " + found +
                      ", expected a line that ends in the command, and the answer");
}

} // namespace

std::vector<std::string> vtyshWords(VtyshCommand const & vtysh,
                                    std::vector<std::string> const & commands) {
    auto words = vtysh.words;
    auto const add = [&](std::string const & word) {
        words.push_back(vtysh.remoteShell ? shellQuoted(word) : word);
    };
    if (!vtysh.pathSpace.empty()) {
        add("-N");
        add(vtysh.pathSpace);
    }
    add("-d");
    add("zebra");
    add("-E");
    for (auto const & command : commands) {
        add("-c");
        add(command);
    }
    return words;
}

bool isComplaint(std::string_view answer) {
    return answer.starts_with("% ");
}

std::vector<std::string_view> vtyshAnswers(std::string_view printed,
                                           std::vector<std::string> const & commands,
                                           LastComplaint lastComplaint) {
    std::vector<std::string_view> answers;
    std::size_t position = 0;
    auto const take = [&](std::size_t end) {
        auto const answer = printed.substr(position, end - position);
        bool const isLast = answers.size() + 1 == commands.size();
        if (isComplaint(answer) && !(isLast && lastComplaint == LastComplaint::isAccepted)) {
            throw AnswerError(commands[answers.size()] + ": vtysh says " +
                              text::shownText(firstLine(answer)));
        }
        if (isCutOff(answer)) {
            throw Failure("unreachable: zebra ended while it answered " + commands[answers.size()]);
        }
        answers.push_back(answer);
    };
    for (auto const & command : commands) {
        bool const first = &command == &commands.front();
        auto const line = echoOf(printed, position, command);
        if (!first) {
            take(line ? line->first : printed.size());
        }
        if (!line) {
            refuseWithoutLine(command, "the end of what vtysh printed");
        }
        if (first && line->first != 0) {
            refuseWithoutLine(command, '"' + text::shownText(firstLine(printed)) + '"');
        }
        auto const newline = printed.find('\n', line->end);
        position = newline == std::string_view::npos ? printed.size() : newline + 1;
    }
    if (!commands.empty()) {
        take(printed.size());
    }
    return answers;
}

} // namespace vxshow::sources::frr
