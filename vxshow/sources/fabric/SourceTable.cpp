#include "vxshow/sources/fabric/SourceTable.h"

#include "vxshow/sources/fabric/AccessReader.h"
#include "vxshow/text/JsonMembers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace vxshow::sources::fabric {

namespace {

constexpr std::array<text::MemberName, 5> commonKeys{"kind", "name", "role", "time_limit",
                                                     "system_id"};
constexpr std::array<text::MemberName, 5> databaseKeys{"remotes", "private_key", "certificate",
                                                       "ca_certificate", "system_ids"};
constexpr std::array<text::MemberName, 3> vtyshKeys{"command", "path_space", "remote_shell"};

struct Kind {
    char const * name;
    std::span<text::MemberName const> keys;
};

constexpr Kind database{"hardware_vtep", databaseKeys};
constexpr Kind vtysh{"frr", vtyshKeys};

bool contains(std::span<text::MemberName const> keys, std::string_view name) {
    return std::any_of(keys.begin(), keys.end(),
                       [&](text::MemberName const & key) { return key.text() == name; });
}

std::string acceptedKeys(Kind const & kind) {
    std::vector<text::MemberName> keys(commonKeys.begin(), commonKeys.end());
    keys.insert(keys.end(), kind.keys.begin(), kind.keys.end());
    return text::oneOf(keys);
}

void checkKeys(text::TomlField const & source, Kind const & kind, Kind const & other) {
    for (text::TomlMember const & member : source.table("a table")) {
        if (contains(commonKeys, member.name) || contains(kind.keys, member.name)) {
            continue;
        }
        auto const note = contains(other.keys, member.name)
                              ? ", which is only for kind \"" + std::string(other.name) + '"'
                              : std::string();
        source.refuseKey(member, note, acceptedKeys(kind));
    }
}

/// Whether `text`, which is UTF-8, has a control character in it: U+0000 to U+001F, or U+007F
/// to U+009F, which are two bytes from U+0080 up.
bool hasControls(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        auto const byte = static_cast<unsigned char>(text[at]);
        auto const next = static_cast<unsigned char>(at + 1 < text.size() ? text[at + 1] : '\0');
        if (byte < 0x20 || byte == 0x7F || (byte == 0xC2 && next < 0xA0)) {
            return true;
        }
    }
    return false;
}

std::string readName(text::TomlField const & field) {
    constexpr std::size_t longest = 256;
    constexpr auto expected = "a name of 1 to 256 bytes without control characters";
    auto const & name = field.text(expected);
    if (name.empty() || name.size() > longest || hasControls(name)) {
        field.refuse(expected);
    }
    return name;
}

Role readRole(text::TomlField const & field) {
    constexpr auto expected = R"("switch", "hsc", "qvx" or "evpn")";
    auto const & role = field.text(expected);
    if (role == "switch") {
        return Role::switches;
    }
    if (role == "hsc") {
        return Role::hsc;
    }
    if (role == "qvx") {
        return Role::qvx;
    }
    if (role == "evpn") {
        return Role::evpn;
    }
    field.refuse(expected);
}

std::chrono::milliseconds readTimeLimit(text::TomlField const & field) {
    constexpr double longest = 3600;
    constexpr auto expected = "seconds: a number greater than 0 and at most 3600";
    double const seconds = field.number(expected);
    // Written so that what is not a number fails it.
    if (!(seconds > 0 && seconds <= longest)) {
        field.refuse(expected);
    }
    return std::max(std::chrono::milliseconds(std::llround(seconds * 1000)),
                    std::chrono::milliseconds(1));
}

Nolt::EthAddr readSystemId(text::TomlField const & field) {
    constexpr auto expected = "an Ethernet address such as 00:1c:73:0a:0b:0c, 00-1c-73-0a-0b-0c "
                              "or 001c.730a.0b0c";
    if (auto const address = Nolt::EthAddr::tryFromString(field.text(expected))) {
        return *address;
    }
    field.refuse(expected);
}

std::map<std::string, Nolt::EthAddr> readSystemIds(text::TomlField const & field) {
    std::map<std::string, Nolt::EthAddr> systemIds;
    for (text::TomlMember const & member : field.table("a table of system identifiers by switch")) {
        systemIds.emplace(member.name, readSystemId(field.at(member)));
    }
    return systemIds;
}

/// The kind is read first: which keys are known depends on it.
bool isDatabase(text::TomlField const & source) {
    constexpr auto expected = R"("hardware_vtep" or "frr")";
    auto const field = source.required("kind");
    auto const & kind = field.text(expected);
    if (kind != database.name && kind != vtysh.name) {
        field.refuse(expected);
    }
    return kind == database.name;
}

} // namespace

Source readSourceTable(text::TomlField const & source, std::string const & folder) {
    source.table("a table");
    Source result;
    bool const isDatabaseSource = isDatabase(source);
    checkKeys(source, isDatabaseSource ? database : vtysh, isDatabaseSource ? vtysh : database);
    result.name = readName(source.required("name"));
    if (auto const field = source.find("role")) {
        result.role = readRole(*field);
    }
    if (auto const field = source.find("time_limit")) {
        result.timeLimit = readTimeLimit(*field);
    }
    if (auto const field = source.find("system_id")) {
        result.systemId = readSystemId(*field);
    }
    if (!isDatabaseSource) {
        result.access = readVtyshCommand(source);
        return result;
    }
    result.access = readDatabaseAddress(source, folder);
    if (auto const field = source.find("system_ids")) {
        result.systemIds = readSystemIds(*field);
    }
    return result;
}

} // namespace vxshow::sources::fabric
