#include "vxshow/sources/ovsdb/Complaint.h"

#include "Vex/Errors.h"
#include "vxshow/sources/ovsdb/Remote.h"

#include <algorithm>
#include <array>
#include <optional>

namespace vxshow::sources::ovsdb {

namespace {

constexpr std::size_t longestComplaint = 300;

std::string_view withoutBlanksAround(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\v\f\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// What the client wrote.
struct Lines {
    std::string_view complaint; ///< the last line that is neither blank nor of the log
    std::string_view tls;       ///< the first message of the log about TLS
};

/// A line of the client's log: its time, its number, the module, the level and the message.
struct Logged {
    std::string_view module;
    std::string_view message;
};

std::optional<Logged> loggedIn(std::string_view line) {
    std::array<std::string_view, 4> fields;
    for (std::string_view & field : fields) {
        auto const end = line.find('|');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        field = line.substr(0, end);
        line.remove_prefix(end + 1);
    }
    bool const isLevel = fields[3] == "EMER" || fields[3] == "ERR" || fields[3] == "WARN";
    return isLevel ? std::optional(Logged{fields[2], line}) : std::nullopt;
}

Lines linesOf(std::string_view errors) {
    Lines lines;
    while (!errors.empty()) {
        auto const end = std::min(errors.find('\n'), errors.size());
        auto const line = withoutBlanksAround(errors.substr(0, end));
        errors.remove_prefix(std::min(end + 1, errors.size()));
        auto const logged = loggedIn(line);
        if (!logged) {
            lines.complaint = line.empty() ? lines.complaint : line;
        } else if (lines.tls.empty() && logged->module == "stream_ssl") {
            lines.tls = logged->message;
        }
    }
    constexpr std::string_view name = "ovsdb-client:";
    if (lines.complaint.starts_with(name)) {
        lines.complaint = withoutBlanksAround(lines.complaint.substr(name.size()));
    }
    return lines;
}

/// The cause in "SSL_connect: error:0A000086:SSL routines::certificate verify failed". Other calls
/// are named, too: "SSL_use_PrivateKey_file: No such file or directory".
std::string tlsCause(std::string_view message) {
    constexpr std::string_view connecting = "SSL_connect: ";
    auto const colons = message.rfind("::");
    auto const cause = colons == std::string_view::npos ? message : message.substr(colons + 2);
    if (message.starts_with(connecting)) {
        // What a TLS client reads from a server that speaks no TLS.
        bool const isPlain =
            contains(cause, "wrong version number") || contains(cause, "unexpected eof");
        auto const rest = cause.size() == message.size() ? cause.substr(connecting.size()) : cause;
        return std::string(rest).append(isPlain ? ": is this port tcp:?" : "");
    }
    auto const call = message.substr(0, message.find(": "));
    return cause.size() == message.size() ? std::string(message)
                                          : std::string(call).append(": ").append(cause);
}

/// The kind of failure that the client reports: it has one exit status for all of them.
std::string_view kindOf(std::string_view complaint) {
    if (contains(complaint, "(Permission denied)")) {
        return "permission";
    }
    if (contains(complaint, "failed to connect") ||
        contains(complaint, "no servers were available")) {
        return "unreachable";
    }
    return contains(complaint, "unknown database") ? "no such schema" : "broken answer";
}

} // namespace

std::string complaintOf(std::string_view errors, std::string_view remote) {
    auto const [complaint, tls] = linesOf(errors);
    if (complaint.empty()) {
        return "";
    }
    auto const host = hostName(remote);
    // This is how the client reports a name that it cannot resolve.
    if (!host.empty() && contains(complaint, "(Address family not supported by protocol)")) {
        return "unreachable: no such host: " + std::string(Vex::printable(host));
    }
    std::string line(kindOf(complaint));
    line.append(": ").append(Vex::printable(complaint.substr(0, longestComplaint)));
    if (!tls.empty()) {
        line.append(": ").append(Vex::printable(tlsCause(tls.substr(0, longestComplaint))));
    }
    return line;
}

} // namespace vxshow::sources::ovsdb
