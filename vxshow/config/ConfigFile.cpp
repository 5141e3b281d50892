#include "vxshow/config/ConfigFile.h"

#include "Vex/Errors.h"
#include "vxshow/system/FileBytes.h"
#include "vxshow/system/OwnedDescriptor.h"
#include "vxshow/text/ControlCharacters.h"
#include "vxshow/text/JsonMembers.h"
#include "vxshow/text/Similar.h"
#include "vxshow/text/TomlField.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <span>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vxshow::config {

namespace {

using Words = std::span<std::string_view const>;

constexpr std::array<std::string_view, 4> rootKeys{"form", "color", "pager", "fabrics"};
constexpr std::array<std::string_view, 2> fabricKeys{"file", "description"};

/// `"a", "b" or "c"`, and which of them was probably meant by `typed`.
std::string oneOf(Words words, std::string_view typed) {
    auto text = text::oneOf(std::vector<text::MemberName>(words.begin(), words.end()));
    auto const meant = text::mostSimilar(typed, {words.begin(), words.end()});
    return meant ? text + "; did you mean \"" + std::string(*meant) + "\"?" : text;
}

void checkKeys(text::TomlField const & table, Words keys) {
    for (text::TomlMember const & member : table.table("a table")) {
        if (std::find(keys.begin(), keys.end(), member.name) == keys.end()) {
            table.refuseKey(member, "", oneOf(keys, member.name));
        }
    }
}

std::string readWord(text::TomlField const & field, Words words) {
    auto const & word = field.text(oneOf(words, ""));
    if (std::find(words.begin(), words.end(), word) == words.end()) {
        field.refuse(oneOf(words, word));
    }
    return word;
}

std::string readPager(text::TomlField const & field) {
    constexpr auto expected = "a command, or false for no pager";
    if (auto const * const command = field.findText()) {
        if (text::hasControls(*command)) {
            field.refuse(expected);
        }
        return *command;
    }
    if (field.boolean(expected)) {
        field.refuse(expected);
    }
    return "";
}

/// `path` as it counts from `folder`, which ends in a slash or is empty.
std::string readPath(text::TomlField const & field, std::string const & folder) {
    constexpr auto expected = "the path of a fabric file, absolute or from this file's folder";
    auto const & path = field.text(expected);
    // No shell expands it, and a folder called ~ is not what was meant.
    if (path.empty() || path.starts_with("~") || text::hasControls(path)) {
        field.refuse(expected);
    }
    return path.starts_with("/") ? path : folder + path;
}

bool isFabricName(std::string_view name) {
    constexpr std::size_t longest = 64;
    return !name.empty() && name.size() <= longest && !name.starts_with("-") &&
           !text::hasControls(name);
}

NamedFabric readFabric(text::TomlField const & field, std::string const & folder) {
    NamedFabric fabric;
    if (field.isTable()) {
        checkKeys(field, fabricKeys);
        fabric.file = readPath(field.required("file"), folder);
        if (auto const description = field.find("description")) {
            constexpr auto expected = "a text without control characters";
            fabric.description = description->text(expected);
            if (text::hasControls(fabric.description)) {
                description->refuse(expected);
            }
        }
    } else {
        fabric.file = readPath(field, folder);
    }
    return fabric;
}

std::vector<NamedFabric> readFabrics(text::TomlField const & table, std::string const & path) {
    auto const folder = path.substr(0, path.rfind('/') + 1);
    std::vector<NamedFabric> fabrics;
    for (text::TomlMember const & member : table.table("a table of fabrics by name")) {
        if (!isFabricName(member.name)) {
            table.refuseKey(member, "",
                            "a name of 1 to 64 bytes without control characters and without a "
                            "dash in front");
        }
        fabrics.push_back(readFabric(table.at(member), folder));
        fabrics.back().name = member.name;
        fabrics.back().definedIn = path;
    }
    std::sort(fabrics.begin(), fabrics.end(),
              [](NamedFabric const & a, NamedFabric const & b) { return a.name < b.name; });
    return fabrics;
}

Settings readDocument(text::TomlValue const & document, std::string const & path) {
    text::TomlField const root(document);
    checkKeys(root, rootKeys);
    Settings settings;
    if (auto const field = root.find("form")) {
        settings.form = readWord(*field, formWords);
    }
    if (auto const field = root.find("color")) {
        settings.color = readWord(*field, colorWords);
    }
    if (auto const field = root.find("pager")) {
        settings.pager = readPager(*field);
    }
    if (auto const field = root.find("fabrics")) {
        settings.fabrics = readFabrics(*field, path);
    }
    return settings;
}

void checkOwner(int file) {
    struct stat found {};

    if (::fstat(file, &found) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    if (!S_ISREG(found.st_mode)) {
        throw ConfigError("expected a regular file");
    }
    if (found.st_uid != 0 && found.st_uid != ::geteuid()) {
        throw ConfigError("belongs to another user; expected your own file, or root's");
    }
    if ((found.st_mode & S_IWOTH) != 0) {
        throw ConfigError("everyone can write to it; expected a file that only its owner can "
                          "write to");
    }
}

/// Whether nothing can be known of the file, as for a process that has changed its user but not
/// HOME.
bool isOutOfReach(std::string const & path) {
    struct stat found {};

    return ::stat(path.c_str(), &found) != 0 &&
           (errno == ENOENT || errno == ENOTDIR || errno == EACCES);
}

} // namespace

std::optional<Settings> readConfigFile(std::string const & path) {
    std::string const name = Vex::printable(path);
    if (isOutOfReach(path)) {
        return std::nullopt;
    }
    try {
        // Opening a pipe would otherwise wait for a writer.
        system::OwnedDescriptor const file(
            ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        if (!file.isOpen()) {
            throw std::system_error(errno, std::generic_category());
        }
        checkOwner(file.number());
        auto const bytes = system::FileBytes::read(file.number(), longestConfig);
        return readDocument(text::readToml(bytes.text()), path);
    } catch (text::TomlRefusal const & refusal) {
        throw ConfigError(name + ":" + refusal.what());
    } catch (ConfigError const & error) {
        throw ConfigError(name + ": " + error.what());
    } catch (std::system_error const & error) {
        throw ConfigError(name + ": " + error.code().message());
    } catch (std::length_error const & error) {
        throw ConfigError(name + ": " + error.what());
    } catch (std::bad_alloc const &) {
        throw ConfigError(name + ": not enough memory for it");
    }
}

} // namespace vxshow::config
