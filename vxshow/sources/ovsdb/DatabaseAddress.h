#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vxshow::sources::ovsdb {

/// Where a database is, and the files to open it with.
struct DatabaseAddress {
    /// The files to open an `ssl:` remote with, in PEM, as `ovsdb-client` takes them.
    struct Ssl {
        std::string privateKey;
        std::string certificate;
        std::string caCertificate;

        bool operator==(Ssl const &) const = default;
    };

    /// The servers of one cluster, or the only one: `unix:FILE`, `tcp:HOST:PORT` or
    /// `ssl:HOST:PORT` each, as in ovsdb(7).
    std::vector<std::string> remotes;
    std::optional<Ssl> ssl = {};

    bool operator==(DatabaseAddress const &) const = default;
};

} // namespace vxshow::sources::ovsdb
