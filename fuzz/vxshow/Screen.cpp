#include "vxshow/terminal/Screen.h"

#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Input.h"
#include "fuzz/harness/Scratch.h"
#include "vxshow/system/DescriptorIo.h"
#include "vxshow/terminal/ShownCharacter.h"
#include "vxshow/terminal/TerminalOutput.h"

#include <algorithm>

/// What goes to a terminal: no control character of the text, and no more lines and columns than
/// the screen has.
namespace fuzz {

namespace {

using namespace vxshow::terminal;

constexpr std::string_view home = "\x1b[H";
constexpr std::string_view eraseLine = "\x1b[K";
constexpr std::string_view eraseBelow = "\x1b[J";

/// Characters of valid UTF-8, counted by its first bytes.
std::size_t charactersOf(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xc0) != 0x80; }));
}

/// Whether a terminal obeys a part of `text`: C0, DEL, and C1 in UTF-8 or as a single byte.
bool hasControl(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        auto const c = static_cast<unsigned char>(text[at]);
        if (c < 0x20 || c == 0x7f ||
            (c == 0xc2 && at + 1 < text.size() &&
             static_cast<unsigned char>(text[at + 1]) < 0xa0)) {
            return true;
        }
    }
    return false;
}

void checkScreen(std::string_view drawn, ScreenSize size) {
    check(drawn.starts_with(home) && drawn.ends_with(eraseBelow),
          "the screen is not drawn from its top, or the rest not erased");
    drawn.remove_prefix(home.size());
    drawn.remove_suffix(eraseBelow.size());
    std::size_t lines = 0;
    while (!drawn.empty()) {
        check(drawn.starts_with(eraseLine), "a line is not erased");
        auto const end = drawn.find("\r\n");
        check(end != std::string_view::npos, "a line does not end");
        auto const line = drawn.substr(eraseLine.size(), end - eraseLine.size());
        check(!hasControl(line), "a control character goes to the terminal");
        check(charactersOf(line) <= size.columns, "a line is longer than the screen is wide");
        drawn.remove_prefix(end + 2);
        ++lines;
    }
    check(lines < std::max<std::size_t>(size.lines, 2), "there are more lines than fit");
}

/// As the terminal shows a listing: one character after the other.
void checkCharacters(std::string_view text) {
    while (!text.empty()) {
        auto const next = firstCharacter(text);
        check(next.length > 0 && next.length <= text.size(), "a character has a wrong length");
        check(!next.shown.empty() && !hasControl(next.shown), "a control character is shown");
        check(next.shown == "?" || next.shown == text.substr(0, next.length),
              "another character is shown");
        text.remove_prefix(next.length);
    }
}

/// The text through a pipe in two pieces, which can part a character.
void checkTerminal(std::string_view text) {
    static Scratch terminal;
    terminal.clear();
    TerminalOutput output(terminal.descriptor());
    auto const half = text.size() / 2;
    for (auto const piece : {text.substr(0, half), text.substr(half)}) {
        check(!vxshow::system::writeAll(output.descriptor(), piece), "the pipe takes no more");
    }
    output.finish();
    std::string expected;
    while (!text.empty()) {
        auto const next = firstCharacter(text);
        bool const keep = text[0] == '\n' || text[0] == '\t';
        expected.append(keep ? text.substr(0, 1) : next.shown);
        text.remove_prefix(next.length);
    }
    check(terminal.content() == expected, "a terminal gets other characters");
}

} // namespace

void screen(std::string_view bytes) {
    Input input(bytes);
    ScreenSize const size{input.below(40), input.below(100)};
    std::string const title(input.upTo('\0'));
    std::vector<std::string> remarks;
    for (unsigned count = input.below(4); count > 0; --count) {
        remarks.emplace_back(input.upTo('\0'));
    }
    std::size_t const start = input.below(40);
    auto const text = input.rest();
    auto const drawing = drawScreen(title, remarks, text, size, Tables::aligned, start);
    checkScreen(drawing.text, size);
    auto const lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    check(drawing.page >= 1, "a page has no line");
    check(drawing.lastStart <= lines, "the last page starts after the end");
    checkCharacters(bytes);
    // A thread takes longer than all else here.
    if (bytes.size() % 8 == 7) {
        checkTerminal(bytes);
    }
}

} // namespace fuzz
