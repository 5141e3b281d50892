#include "vxshow/sources/ovsdb/Client.h"

#include "Vex/Errors.h"
#include "vxshow/system/Reason.h"
#include "vxshow/system/Run.h"

#include <algorithm>
#include <string_view>

namespace vxshow::sources::ovsdb {

namespace {

constexpr std::size_t longestComplaint = 300;

std::string_view withoutBlanksAround(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\v\f\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// The last line of the client's standard error that is not blank, without its own name.
std::string_view complaint(std::string_view errors) {
    errors = withoutBlanksAround(errors);
    errors = withoutBlanksAround(errors.substr(errors.rfind('\n') + 1));
    constexpr std::string_view prefix = "ovsdb-client:";
    return errors.starts_with(prefix) ? withoutBlanksAround(errors.substr(prefix.size())) : errors;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
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

std::vector<std::string> Client::words(std::string const & transaction) const {
    // Its log would be mixed with the one line that says why it failed.
    std::vector<std::string> words{program, "-vconsole:off"};
    if (ssl_) {
        words.push_back("--private-key=" + ssl_->privateKey);
        words.push_back("--certificate=" + ssl_->certificate);
        words.push_back("--ca-cert=" + ssl_->caCertificate);
    }
    words.insert(words.end(), {"query", remote_, transaction});
    return words;
}

system::FileBytes Client::query(std::string const & transaction, Deadline const & deadline) const {
    auto answer = system::run(words(transaction), {deadline.end, longestAnswer_});
    auto * const exited = std::get_if<system::Exited>(&answer);
    if (exited && exited->status == 0) {
        return std::move(exited->output);
    }
    auto const line = exited ? complaint(exited->errors) : std::string_view();
    if (!line.empty()) {
        throw ServerFailure(std::string(kindOf(line)) + ": " +
                            Vex::printable(line.substr(0, longestComplaint)));
    }
    throw ServerFailure(system::reason(answer, program, deadline.limit));
}

} // namespace vxshow::sources::ovsdb
