#include "vxshow/config/ReadSettings.h"

#include "Vex/Errors.h"
#include "vxshow/text/Similar.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace vxshow::config {

namespace {

constexpr char const * systemFile = "/etc/vxshow/config.toml";
constexpr char const * fileInFolder = "/vxshow/config.toml";

/// The value of a variable that must be an absolute path; empty if it is not.
std::string absoluteFolder(char const * variable) {
    char const * const value = std::getenv(variable);
    return value && value[0] == '/' ? value : "";
}

std::string userPath() {
    auto const folder = absoluteFolder("XDG_CONFIG_HOME");
    if (!folder.empty()) {
        return folder + fileInFolder;
    }
    auto const home = absoluteFolder("HOME");
    return home.empty() ? "" : home + "/.config" + fileInFolder;
}

std::string systemPath() {
    char const * const other = std::getenv("VXSHOW_SYSTEM_CONFIG");
    return other ? other : systemFile;
}

/// Adds what `more` sets and `settings` does not.
void addTo(Settings & settings, Settings more) {
    auto const keep = [](std::optional<std::string> & value, std::optional<std::string> & other) {
        if (!value) {
            value = std::move(other);
        }
    };
    keep(settings.form, more.form);
    keep(settings.color, more.color);
    keep(settings.pager, more.pager);
    for (NamedFabric & fabric : more.fabrics) {
        fabric.isHidden = fabricNamed(settings, fabric.name) != nullptr;
    }
    std::vector<NamedFabric> all;
    std::merge(std::make_move_iterator(settings.fabrics.begin()),
               std::make_move_iterator(settings.fabrics.end()),
               std::make_move_iterator(more.fabrics.begin()),
               std::make_move_iterator(more.fabrics.end()), std::back_inserter(all),
               [](NamedFabric const & a, NamedFabric const & b) { return a.name < b.name; });
    settings.fabrics = std::move(all);
}

} // namespace

Settings readSettings() {
    Settings settings;
    for (std::string const & path : {userPath(), systemPath()}) {
        if (path.empty()) {
            continue;
        }
        auto read = readConfigFile(path);
        settings.files.push_back({path, read.has_value()});
        if (read) {
            addTo(settings, *std::move(read));
        }
    }
    return settings;
}

NamedFabric const * fabricNamed(Settings const & settings, std::string_view name) {
    auto const & fabrics = settings.fabrics;
    // Of two with the same name, the hidden one is the second.
    auto const found = std::lower_bound(
        fabrics.begin(), fabrics.end(), name,
        [](NamedFabric const & fabric, std::string_view text) { return fabric.name < text; });
    return found != fabrics.end() && found->name == name ? &*found : nullptr;
}

std::string unknownFabric(Settings const & settings, std::string_view name) {
    constexpr std::size_t mostNames = 20;
    std::vector<std::string_view> names;
    for (NamedFabric const & fabric : settings.fabrics) {
        if (!fabric.isHidden) {
            names.push_back(fabric.name);
        }
    }
    std::string line = "no fabric is named " + Vex::quoted(name);
    if (names.empty()) {
        return line + ", and none is configured; [fabrics] in vxshow/config.toml names them";
    }
    if (auto const meant = text::mostSimilar(name, names)) {
        line += "; did you mean " + Vex::printable(*meant) + "?";
    }
    line += line.back() == '?' ? " Configured: " : "; configured: ";
    auto const shown = std::min(names.size(), mostNames);
    for (std::size_t place = 0; place < shown; ++place) {
        line += place == 0 ? "" : ", ";
        line += Vex::printable(names[place]);
    }
    return line +
           (shown < names.size() ? ", and " + std::to_string(names.size() - shown) + " more" : "");
}

} // namespace vxshow::config
