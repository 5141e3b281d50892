#include "vxshow/sources/ovsdb/OvsdbKind.h"

#include "vxshow/sources/SystemId.h"
#include "vxshow/sources/ovsdb/DatabaseAccess.h"
#include "vxshow/sources/ovsdb/Remote.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

namespace vxshow::sources::ovsdb {

namespace {

constexpr std::array<std::string_view, 5> keys{"remotes", "private_key", "certificate",
                                               "ca_certificate", "system_ids"};
constexpr std::array<char const *, 3> sslKeys{"private_key", "certificate", "ca_certificate"};

std::vector<std::string> readRemoteList(text::TomlField const & field) {
    std::string const expected = "an array of 1 to " + std::to_string(mostRemotes) + " remotes";
    auto const elements = field.elements(expected);
    if (elements.empty()) {
        field.refuse(expected);
    }
    if (elements.size() > mostRemotes) {
        field.refuse("an array of " + std::to_string(elements.size()), expected);
    }
    std::vector<std::string> remotes;
    for (text::TomlField const & element : elements) {
        auto const & remote = element.text("unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT");
        if (auto const refusal = remoteRefusal(remote)) {
            element.refuse(*refusal);
        }
        remotes.push_back(remote);
    }
    return remotes;
}

std::string readFileName(text::TomlField const & field, std::string const & folder) {
    constexpr auto expected = "the name of a file";
    auto const & name = field.text(expected);
    if (name.empty() || name.find('\0') != std::string::npos) {
        field.refuse(expected);
    }
    return name[0] == '/' ? name : folder + name;
}

DatabaseAddress::Ssl readSsl(text::TomlField const & source, std::string const & folder) {
    auto const file = [&](char const * key) {
        auto const field = source.find(key);
        if (!field) {
            source.refuse('"' + std::string(key) + "\" in it, since a remote is ssl:");
        }
        return readFileName(*field, folder);
    };
    return {file(sslKeys[0]), file(sslKeys[1]), file(sslKeys[2])};
}

void refuseSslKeys(text::TomlField const & source) {
    for (char const * const key : sslKeys) {
        if (auto const field = source.find(key)) {
            field->refuse("no such key, since no remote is ssl:");
        }
    }
}

DatabaseAddress readAddress(text::TomlField const & source, std::string const & folder) {
    DatabaseAddress address;
    address.remotes = readRemoteList(source.required("remotes"));
    if (std::any_of(address.remotes.begin(), address.remotes.end(), isSslRemote)) {
        address.ssl = readSsl(source, folder);
    } else {
        refuseSslKeys(source);
    }
    return address;
}

std::map<std::string, Nolt::EthAddr> readSystemIds(text::TomlField const & field) {
    std::map<std::string, Nolt::EthAddr> systemIds;
    for (text::TomlMember const & member : field.table("a table of system identifiers by switch")) {
        systemIds.emplace(member.name, readSystemId(field.at(member)));
    }
    return systemIds;
}

std::shared_ptr<Access const> readDatabaseAccess(text::TomlField const & source,
                                                 std::string const & folder) {
    auto address = readAddress(source, folder);
    auto const field = source.find("system_ids");
    return std::make_shared<DatabaseAccess>(
        std::move(address), field ? readSystemIds(*field) : std::map<std::string, Nolt::EthAddr>());
}

} // namespace

Kind kind() {
    return {"hardware_vtep", keys, readDatabaseAccess};
}

Source sourceAt(std::string const & remotes) {
    auto name = remotes;
    // Names have no control characters, in a snapshot too.
    std::replace(name.begin(), name.end(), '\t', ' ');
    return {.name = std::move(name),
            .access = std::make_shared<DatabaseAccess>(readRemotes(remotes)),
            .kind = std::string(kind().name)};
}

} // namespace vxshow::sources::ovsdb
