#pragma once

#include "vxshow/sources/Access.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/Failure.h"
#include "vxshow/sources/ovsdb/DatabaseAddress.h"
#include "vxshow/system/FileBytes.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vxshow::sources::ovsdb {

/// A server that could not be asked, or went away meanwhile. Another of its cluster can answer.
class ServerFailure : public Failure {
public:
    using Failure::Failure;
};

/// One database server, asked through the stock `ovsdb-client` (its manual is ovsdb-client(1)).
///
/// Each call runs the client with one server: given several, the client waits for a hung one
/// before it tries the next.
class Client {
public:
    static constexpr char const * program = "ovsdb-client";

    /// The server at `remote`. Both references outlive this. An answer of more than `longestAnswer`
    /// bytes is refused.
    Client(std::string const & remote, std::optional<DatabaseAddress::Ssl> const & ssl,
           std::size_t longestAnswer = maxClientOutput)
        : remote_(remote), ssl_(ssl), longestAnswer_(longestAnswer) {}

    std::string const & remote() const noexcept { return remote_; }

    /// The answer to `transaction`: one line of JSON (RFC 7047, section 4.1.3), which can report
    /// that an operation failed. The client adds an abort, so nothing is ever written. Raises
    /// `ServerFailure`.
    system::FileBytes query(std::string const & transaction, Deadline const & deadline) const;

    /// The schema of the database, as the server describes it. Raises `ServerFailure`.
    system::FileBytes schema(Deadline const & deadline) const;

private:
    std::vector<std::string> words(std::vector<std::string> const & command) const;
    system::FileBytes outputOf(std::vector<std::string> const & command, std::size_t longest,
                               Deadline const & deadline) const;

    std::string const & remote_;
    std::optional<DatabaseAddress::Ssl> const & ssl_;
    std::size_t longestAnswer_;
};

} // namespace vxshow::sources::ovsdb
