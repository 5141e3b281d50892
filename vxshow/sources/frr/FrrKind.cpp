#include "vxshow/sources/frr/FrrKind.h"

#include "vxshow/sources/frr/VtyshAccess.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vxshow::sources::frr {

namespace {

constexpr std::array<std::string_view, 4> keys{"command", "path_space", "remote_shell",
                                               "expects_evpn"};

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
    // vtysh itself refuses a dot or a slash, which could lead out of the daemons' folder.
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

std::shared_ptr<Access const> readVtyshAccess(text::TomlField const & source,
                                              std::string const & /*folder*/) {
    VtyshCommand command;
    if (auto const field = source.find("command")) {
        command.words = readCommand(*field);
    }
    if (auto const field = source.find("path_space")) {
        command.pathSpace = readPathSpace(*field);
    }
    auto const shell = source.find("remote_shell");
    command.remoteShell = shell ? shell->boolean("true or false") : runsThroughSsh(command.words);
    auto const expectsEvpn = source.find("expects_evpn");
    return std::make_shared<VtyshAccess>(std::move(command),
                                         !expectsEvpn || expectsEvpn->boolean("true or false"));
}

} // namespace

sources::Kind kind() {
    return {"frr", keys, readVtyshAccess};
}

Source localSource() {
    return {.name = "frr",
            .access = std::make_shared<VtyshAccess>(VtyshCommand{}),
            .kind = std::string(kind().name)};
}

} // namespace vxshow::sources::frr
