#include "vxshow/sources/ovsdb/Remote.h"

#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "vxshow/text/Quoting.h"

#include <algorithm>
#include <charconv>

namespace vxshow::sources::ovsdb {

namespace {

constexpr std::string_view unixMethod = "unix:";
constexpr std::string_view tcpMethod = "tcp:";
constexpr std::string_view sslMethod = "ssl:";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c) || c == '-' || c == '_' ||
           c == '.';
}

bool isForbidden(char c) {
    return (c >= '\0' && c <= ' ') || c == ',' || c == '\x7F';
}

bool isPort(std::string_view text) {
    unsigned port = 0;
    auto const * const end = text.data() + text.size();
    auto const read = std::from_chars(text.data(), end, port);
    return read.ec == std::errc() && read.ptr == end && port >= 1 && port <= 65535;
}

/// A name whose last label is a number would be taken for an IPv4 address, so it has to be one.
bool isNameOrIpv4(std::string_view host) {
    constexpr std::size_t longestName = 253;
    if (host.empty() || host.size() > longestName || host[0] == '.' || host[0] == '-' ||
        host.find("..") != std::string_view::npos ||
        !std::all_of(host.begin(), host.end(), isNameCharacter)) {
        return false;
    }
    auto const labels = host.ends_with('.') ? host.substr(0, host.size() - 1) : host;
    auto const last = labels.substr(labels.rfind('.') + 1);
    bool const numeric = !last.empty() && std::all_of(last.begin(), last.end(), isDigit);
    return !numeric || Nolt::IpAddr::tryFromString(host);
}

bool isIpv6(std::string_view host) {
    auto const percent = host.find('%');
    if (percent != std::string_view::npos) {
        auto const zone = host.substr(percent + 1);
        if (zone.empty() || !std::all_of(zone.begin(), zone.end(), isNameCharacter)) {
            return false;
        }
    }
    auto const address = Nolt::IpGenAddr::tryFromString(host.substr(0, percent));
    return address && address->family() == Nolt::Family::ipv6;
}

/// What was expected in place of `text`, which should be `HOST` or `HOST:PORT`.
std::optional<std::string> serverRefusal(std::string_view text) {
    bool const bracket = text.starts_with('[');
    auto const hostEnd = bracket ? text.find(']') : text.find(':');
    auto const host =
        bracket ? text.substr(1, std::max<std::size_t>(hostEnd, 1) - 1) : text.substr(0, hostEnd);
    if (bracket ? hostEnd == std::string_view::npos || !isIpv6(host) : !isNameOrIpv4(host)) {
        return "a HOST that is a name, an IPv4 address or an IPv6 address in brackets";
    }
    auto const rest = text.substr(std::min(host.size() + (bracket ? 2 : 0), text.size()));
    if (!rest.empty() && (rest[0] != ':' || !isPort(rest.substr(1)))) {
        return "a PORT from 1 to 65535";
    }
    return std::nullopt;
}

[[noreturn]] void refuse(std::string_view found, std::string const & expected) {
    throw RemoteError("found \"" + text::shownText(found) + "\", expected " + expected);
}

std::string_view withoutBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

void checkShortForm(std::string_view remote) {
    if (isSslRemote(remote)) {
        refuse(remote,
               "unix:FILE or tcp:HOST:PORT; ssl: needs a fabric file, which names its keys");
    }
    if (auto const expected = remoteRefusal(remote)) {
        refuse(remote, *expected);
    }
}

} // namespace

bool isSslRemote(std::string_view remote) {
    return remote.starts_with(sslMethod);
}

std::string_view hostName(std::string_view remote) {
    if (!remote.starts_with(tcpMethod) && !isSslRemote(remote)) {
        return {};
    }
    auto const server = remote.substr(tcpMethod.size());
    auto const host = server.substr(0, server.find(':'));
    return server.starts_with('[') || Nolt::IpAddr::tryFromString(host) ? std::string_view() : host;
}

std::optional<std::string> remoteRefusal(std::string_view remote) {
    if (std::any_of(remote.begin(), remote.end(), isForbidden)) {
        return "a remote without blanks, commas and control characters";
    }
    if (remote.starts_with(unixMethod)) {
        if (!remote.substr(unixMethod.size()).starts_with('/')) {
            return "the absolute path of a socket after unix:";
        }
        return std::nullopt;
    }
    if (remote.starts_with(tcpMethod) || isSslRemote(remote)) {
        return serverRefusal(remote.substr(tcpMethod.size()));
    }
    return "unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT";
}

DatabaseAddress readRemotes(std::string_view text) {
    DatabaseAddress address;
    for (std::size_t start = 0; start <= text.size();) {
        auto const comma = std::min(text.find(',', start), text.size());
        auto remote = text.substr(start, comma - start);
        if (start > 0) {
            remote = withoutBlanks(remote);
        }
        checkShortForm(remote);
        address.remotes.emplace_back(remote);
        start = comma + 1;
    }
    if (address.remotes.size() > mostRemotes) {
        throw RemoteError("found " + std::to_string(address.remotes.size()) +
                          " remotes, expected at most " + std::to_string(mostRemotes));
    }
    return address;
}

} // namespace vxshow::sources::ovsdb
