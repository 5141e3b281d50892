#include "vxshow/mount/hardware_vtep/OvsdbClient.h"

#include "Vex/Errors.h"
#include "vxshow/process/Reason.h"

#include <string_view>

namespace vxshow {

namespace {

constexpr std::size_t longestComplaint = 300;

/// The last line of what the client has said, without its own name.
std::string_view complaint(std::string_view errors) {
    while (!errors.empty() && errors.back() == '\n') {
        errors.remove_suffix(1);
    }
    errors.remove_prefix(errors.rfind('\n') + 1);
    constexpr std::string_view prefix = "ovsdb-client: ";
    if (errors.starts_with(prefix)) {
        errors.remove_prefix(prefix.size());
    }
    return errors;
}

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// What kind of failure the client complains of: it has one exit status for all of them.
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

std::vector<std::string> OvsdbClient::words(std::string const & transaction) const {
    // Its log would be mixed with the one line that tells why it fails.
    std::vector<std::string> words{program, "-vconsole:off"};
    if (ssl_) {
        words.push_back("--private-key=" + ssl_->privateKey);
        words.push_back("--certificate=" + ssl_->certificate);
        words.push_back("--ca-cert=" + ssl_->caCertificate);
    }
    words.insert(words.end(), {"query", remote_, transaction});
    return words;
}

FileBytes OvsdbClient::query(std::string const & transaction, Deadline const & deadline) const {
    auto answer = process::run(words(transaction), {deadline.end, longestAnswer});
    auto * const exited = std::get_if<process::Exited>(&answer);
    if (exited && exited->status == 0) {
        return std::move(exited->output);
    }
    auto const line = exited ? complaint(exited->errors) : std::string_view();
    if (!line.empty()) {
        throw ServerFailure(std::string(kindOf(line)) + ": " +
                            Vex::printable(line.substr(0, longestComplaint)));
    }
    throw ServerFailure(process::reason(answer, program, deadline.limit));
}

} // namespace vxshow
