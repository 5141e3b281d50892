#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "vxshow/sources/ovsdb/Remote.h"

#include <algorithm>

/// The texts that name the servers of a database: one that is accepted consists of valid remotes
/// and is the same when it is put together again, and a refusal is one printable line.
namespace fuzz {

namespace {

bool isForbidden(char c) {
    return static_cast<unsigned char>(c) <= ' ' || c == ',' || c == '\x7F';
}

void checkAccepted(std::string_view text, vxshow::sources::ovsdb::DatabaseAddress const & address) {
    using namespace vxshow::sources::ovsdb;
    check(!address.remotes.empty() && address.remotes.size() <= mostRemotes,
          "there are no remotes, or too many");
    check(!address.ssl, "an address on the command line has keys");
    std::string joined;
    for (auto const & remote : address.remotes) {
        check(!remoteRefusal(remote), "an invalid remote is accepted");
        check(!isSslRemote(remote), "ssl: is accepted without its files");
        check(std::none_of(remote.begin(), remote.end(), isForbidden),
              "a remote has a blank, a comma or a control character");
        check(text.find(remote) != std::string_view::npos, "a remote is not in the text");
        joined += (joined.empty() ? "" : ",") + remote;
    }
    check(readRemotes(joined) == address, "the remotes are read as others when joined");
}

} // namespace

void remotes(std::string_view bytes) {
    using namespace vxshow::sources::ovsdb;
    try {
        checkAccepted(bytes, readRemotes(bytes));
    } catch (RemoteError const & error) {
        std::string_view const line = error.what();
        check(line.size() < 400, "a refusal is longer than the text that it may quote");
        check(std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; }),
              "a refusal is not one line of printable ASCII");
    }
}

} // namespace fuzz
