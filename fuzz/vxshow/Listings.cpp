#include "fuzz/vxshow/Listings.h"

#include "Vex/Errors.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Lines.h"
#include "outfmt/Printer.h"
#include "tests/unit/platform/outfmt/JsonReader.h"
#include "vxshow/cli/CommandLine.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/state/snapshot/Document.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/JsonRefusal.h"

#include <cstdlib>
#include <exception>
#include <utility>
#include <vector>

namespace fuzz {

using namespace vxshow;

namespace {

constexpr unsigned textFormat = 1;
constexpr unsigned compactFormat = 2;

using Arguments = std::vector<char const *>;

/// A command line of the program, as it is read from words.
cli::CommandLine lineOf(Arguments words) {
    static bool const isAlone = ::setenv("XDG_CONFIG_HOME", "/nonexistent", 1) == 0 &&
                                ::setenv("VXSHOW_SYSTEM_CONFIG", "", 1) == 0;
    check(isAlone, "the environment cannot be changed");
    words.insert(words.begin(), {"vxshow", "--state", "x"});
    words.push_back(nullptr);
    auto read = cli::readCommandLine(static_cast<int>(words.size()) - 1, words.data(),
                                     cli::command::addCommands);
    auto * const line = std::get_if<cli::CommandLine>(&read);
    check(line != nullptr, "a command line of the fuzzing targets is refused");
    return std::move(*line);
}

std::vector<cli::CommandLine> linesOf(std::vector<Arguments> const & all) {
    std::vector<cli::CommandLine> lines;
    for (auto const & words : all) {
        lines.push_back(lineOf(words));
    }
    return lines;
}

/// What the command prints, or the error that it raises.
std::string listing(cli::CommandLine const & line, state::Mount const & mount, unsigned format,
                    Scratch & file) {
    auto output = line.output;
    output.format = static_cast<cli::Format>(format);
    file.clear();
    try {
        line.render(mount, file.descriptor(), output);
    } catch (std::exception const & error) {
        std::string_view const words = error.what();
        check(words.starts_with("entry '") || words.starts_with("entries '"),
              "a command fails without naming an entry");
        return "refused: " + std::string(words);
    }
    auto printed = file.content();
    if (format != textFormat) {
        outfmt::test::readJson(printed);
    }
    return printed;
}

} // namespace

void listAll(state::Mount const & mount, unsigned format, Scratch & file) {
    static auto const lines = linesOf({{"mac", "received"},
                                       {"mac", "advertised"},
                                       {"mac", "advertised", "--dest", "evpn", "--dotted"},
                                       {"arp", "received", "--dotted"},
                                       {"arp", "advertised"},
                                       {"router", "map"},
                                       {"router", "detail"},
                                       {"router", "routes"}});
    for (auto const & line : lines) {
        listing(line, mount, format, file);
    }
}

void listSelected(std::string_view text, state::Mount const & mount, std::size_t which,
                  Scratch & file) {
    constexpr char const * mac = "00:00:5e:00:53:11";
    static auto const lines =
        linesOf({{"mac", "received", "--vni", "10"},
                 {"mac", "received", "--mac", mac, "--source", "evpn"},
                 {"mac", "received", "--source", "leaf1", "--vni", "4098"},
                 {"mac", "received", "--source", "all", "--vtep", "10.0.0.1"},
                 {"mac", "received", "--vni", "10,20-4098"},
                 {"mac", "received", "--source", "leaf*,evpn", "--mac", "00:*"},
                 {"mac", "received", "--vtep", "10.0.0.0/8"},
                 {"mac", "advertised", "--vni", "10"},
                 {"mac", "advertised", "--vni", "0-4098"},
                 {"mac", "advertised", "--mac", mac, "--dest", "hsc"},
                 {"arp", "received", "--vni", "10", "--switch", "leaf1"},
                 {"arp", "received", "--mac", mac},
                 {"arp", "advertised", "--vni", "10"},
                 {"arp", "advertised", "--ip", "2001:db8::1"},
                 {"arp", "advertised", "--vni", "10-20", "--ip", "::/0"},
                 {"arp", "received", "--switch", "l?*", "--mac", "00:00/16"},
                 {"router", "map", "--vtep", "10.0.0.1"},
                 {"router", "map", "--router", "*", "--vtep", "10.0.0.0/8"},
                 {"router", "map", "--switch", "*:*", "--vtep", "10.0.0.1"},
                 {"router", "routes", "--prefix", "10.0.0.0/8"},
                 {"router", "routes", "--prefix", "10.0.0.0/8,::/0"}});
    auto const & line = lines[which % lines.size()];
    auto const selected = mountOf(text, line.selection);
    check(selected.has_value(), "a snapshot is refused when only a part of it is selected");
    check(listing(line, *selected, textFormat, file) == listing(line, mount, textFormat, file),
          "a listing depends on what is mounted beyond the selection");
}

std::optional<std::string> snapshotOf(state::Mount const & mount, Scratch & file) {
    file.clear();
    outfmt::Printer printer(file.descriptor(), compactFormat, true, false, true, 0);
    try {
        state::snapshot::writeSnapshot(mount, printer);
    } catch (state::snapshot::Unwritable const & error) {
        checkLine(error.what());
        return std::nullopt;
    }
    return file.content();
}

std::optional<state::Mount> mountOf(std::string_view text, state::Selection const & selection) {
    auto const bytes = system::FileBytes::copyOf(text);
    try {
        text::JsonReader json(bytes);
        return state::snapshot::readDocument(json, selection);
    } catch (text::Refusal const & refusal) {
        checkLine(text::refusalLine(refusal, bytes.text()));
    } catch (text::MalformedJson const & malformed) {
        checkLine(text::refusalLine(malformed, bytes.text()));
    } catch (Vex::Error const & error) {
        checkLine(error.what());
    }
    return std::nullopt;
}

void checkSnapshot(state::Mount const & mount, Scratch & file) {
    auto const written = snapshotOf(mount, file);
    if (!written) {
        return;
    }
    outfmt::test::readJson(*written);
    auto const again = mountOf(*written);
    check(again.has_value(), "a snapshot that was written is refused");
    check(snapshotOf(*again, file) == written, "a snapshot that is read and written differs");
}

} // namespace fuzz
