#include "vxshow/sources/ovsdb/Client.h"

#include "vxshow/sources/EndlessValue.h"
#include "vxshow/sources/ovsdb/Complaint.h"
#include "vxshow/system/Reason.h"
#include "vxshow/system/Run.h"

#include <utility>
#include <variant>

namespace vxshow::sources::ovsdb {

std::vector<std::string> Client::words(std::vector<std::string> const & command) const {
    std::vector<std::string> words{program, loggingOption};
    if (ssl_) {
        words.push_back("--private-key=" + ssl_->privateKey);
        words.push_back("--certificate=" + ssl_->certificate);
        words.push_back("--ca-cert=" + ssl_->caCertificate);
    }
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

system::FileBytes Client::query(std::string const & transaction, Deadline const & deadline) const {
    return outputOf({"query", remote_, transaction}, longestAnswer_, deadline);
}

system::FileBytes Client::schema(Deadline const & deadline) const {
    constexpr std::size_t longest = 1 << 20;
    return outputOf({"get-schema", remote_, "hardware_vtep"}, longest, deadline);
}

system::FileBytes Client::outputOf(std::vector<std::string> const & command, std::size_t longest,
                                   Deadline const & deadline) const {
    EndlessValue watch;
    auto const watched = [&](std::string_view piece) {
        if (watch.takes(piece)) {
            throw ServerFailure(EndlessValue::reason());
        }
    };
    auto answer = system::run(words(command), {deadline.end, longest}, watched);
    auto * const exited = std::get_if<system::Exited>(&answer);
    if (exited && exited->status == 0) {
        return std::move(exited->output);
    }
    auto const complaint = exited ? complaintOf(exited->errors, remote_) : "";
    if (!complaint.empty()) {
        throw ServerFailure(complaint);
    }
    throw ServerFailure(system::reason(answer, program, deadline.limit));
}

} // namespace vxshow::sources::ovsdb
