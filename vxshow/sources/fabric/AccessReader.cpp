#include "vxshow/sources/fabric/AccessReader.h"

#include "vxshow/sources/ovsdb/Remote.h"

#include <algorithm>
#include <array>

namespace vxshow::sources::fabric {

namespace {

constexpr std::array<char const *, 3> sslKeys{"private_key", "certificate", "ca_certificate"};

std::vector<std::string> readRemoteList(text::TomlField const & field) {
    std::string const expected =
        "an array of 1 to " + std::to_string(ovsdb::mostRemotes) + " remotes";
    auto const elements = field.elements(expected);
    if (elements.empty()) {
        field.refuse(expected);
    }
    if (elements.size() > ovsdb::mostRemotes) {
        field.refuse("an array of " + std::to_string(elements.size()), expected);
    }
    std::vector<std::string> remotes;
    for (text::TomlField const & element : elements) {
        auto const & remote = element.text("unix:FILE, tcp:HOST:PORT or ssl:HOST:PORT");
        if (auto const refusal = ovsdb::remoteRefusal(remote)) {
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

ovsdb::DatabaseAddress::Ssl readSsl(text::TomlField const & source, std::string const & folder) {
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

std::vector<std::string> readCommand(text::TomlField const & field) {
    constexpr auto expected = "an array of the words of a command";
    std::vector<std::string> words;
    for (text::TomlField const & element : field.elements(expected)) {
        constexpr auto expectedWord = "a text that is not empty and without U+0000";
        auto const & word = element.text(expectedWord);
        if (word.empty() || word.find('\0') != std::string::npos) {
            element.refuse(expectedWord);
        }
        words.push_back(word);
    }
    if (words.empty()) {
        field.refuse(expected);
    }
    return words;
}

bool isPathSpaceCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-';
}

std::string readPathSpace(text::TomlField const & field) {
    // A dot or a slash, which could lead out of the folder of the daemons, vtysh refuses itself.
    constexpr auto expected = "a path space: letters, digits, \"_\" and \"-\", which is not first";
    auto const & name = field.text(expected);
    if (name.empty() || name[0] == '-' ||
        !std::all_of(name.begin(), name.end(), isPathSpaceCharacter)) {
        field.refuse(expected);
    }
    return name;
}

bool runsThroughSsh(std::vector<std::string> const & command) {
    return std::any_of(command.begin(), command.end(), [](std::string const & word) {
        return word == "ssh" || word.ends_with("/ssh");
    });
}

} // namespace

ovsdb::DatabaseAddress readDatabaseAddress(text::TomlField const & source,
                                           std::string const & folder) {
    ovsdb::DatabaseAddress address;
    address.remotes = readRemoteList(source.required("remotes"));
    if (std::any_of(address.remotes.begin(), address.remotes.end(), ovsdb::isSslRemote)) {
        address.ssl = readSsl(source, folder);
    } else {
        refuseSslKeys(source);
    }
    return address;
}

frr::VtyshCommand readVtyshCommand(text::TomlField const & source) {
    frr::VtyshCommand command;
    if (auto const field = source.find("command")) {
        command.words = readCommand(*field);
    }
    if (auto const field = source.find("path_space")) {
        command.pathSpace = readPathSpace(*field);
    }
    auto const shell = source.find("remote_shell");
    command.remoteShell = shell ? shell->boolean("true or false") : runsThroughSsh(command.words);
    return command;
}

} // namespace vxshow::sources::fabric
