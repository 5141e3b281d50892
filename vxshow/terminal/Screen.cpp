#include "vxshow/terminal/Screen.h"

#include "vxshow/terminal/ShownCharacter.h"
#include "vxshow/terminal/TerminalText.h"

#include <algorithm>
#include <sys/ioctl.h>

namespace vxshow::terminal {

namespace {

constexpr std::string_view cursorHome = "\x1b[H";
constexpr std::string_view eraseRestOfLine = "\x1b[K";
constexpr std::string_view eraseBelow = "\x1b[J";

/// Adds one line of the screen. The old line is erased first: after a line as wide as the screen
/// the cursor is still on its last character, which erasing would remove.
void appendLine(std::string & out, std::string_view line, std::size_t columns,
                CharacterWidth const & width) {
    out.append(eraseRestOfLine);
    for (std::size_t used = 0; !line.empty();) {
        auto const next = firstCharacter(line);
        used += width.of(next.shown);
        if (used > columns) {
            break;
        }
        out.append(next.shown);
        line.remove_prefix(next.length);
    }
    out.append("\r\n");
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        auto const end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace

ScreenSize screenSize(int descriptor) {
    winsize size{};
    if (::ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
        return {24, 80};
    }
    return {size.ws_row, size.ws_col};
}

std::string drawScreen(std::string const & title, std::vector<std::string> const & remarks,
                       std::string_view text, ScreenSize size) {
    std::vector<std::string_view> lines{title};
    for (std::string const & remark : remarks) {
        auto const remarkLines = linesOf(remark);
        lines.insert(lines.end(), remarkLines.begin(), remarkLines.end());
    }
    lines.emplace_back();
    auto const shown = TerminalText::of(text);
    auto const body = linesOf(shown);
    lines.insert(lines.end(), body.begin(), body.end());
    auto const room = std::max<std::size_t>(size.lines, 2) - 1;
    std::string more;
    if (lines.size() > room) {
        more = "... " + std::to_string(lines.size() - room + 1) + " lines more";
        lines.resize(room - 1);
        lines.emplace_back(more);
    }
    CharacterWidth const width;
    std::string out(cursorHome);
    for (std::string_view const line : lines) {
        appendLine(out, line, size.columns, width);
    }
    return out.append(eraseBelow);
}

} // namespace vxshow::terminal
