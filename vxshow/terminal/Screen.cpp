#include "vxshow/terminal/Screen.h"

#include "vxshow/terminal/ShownCharacter.h"

#include <algorithm>
#include <cstddef>
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

/// Adds the lines of the remarks, at most `most` and at least one.
void addRemarks(std::vector<std::string> const & remarks, std::size_t most,
                std::vector<std::string> & lines) {
    std::vector<std::string_view> all;
    for (std::string const & remark : remarks) {
        auto const some = linesOf(remark);
        all.insert(all.end(), some.begin(), some.end());
    }
    most = std::max<std::size_t>(most, 1);
    bool const fit = all.size() <= most;
    lines.insert(lines.end(), all.begin(),
                 fit ? all.end() : all.begin() + static_cast<std::ptrdiff_t>(most) - 1);
    if (!fit) {
        auto const left = all.size() - most + 1;
        lines.push_back(std::to_string(left) + (most == 1 ? " remarks" : " remarks more"));
    }
}

/// Which lines of the listing are shown.
std::string place(std::size_t start, std::size_t count, std::size_t all) {
    if (start == 0) {
        return "... " + std::to_string(all - count) + " lines more";
    }
    return "lines " + std::to_string(start + 1) + " to " + std::to_string(start + count) + " of " +
           std::to_string(all);
}

} // namespace

ScreenSize screenSize(int descriptor) {
    winsize size{};
    if (::ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0) {
        return {24, 80};
    }
    return {size.ws_row, size.ws_col};
}

Drawing drawScreen(std::string const & title, std::vector<std::string> const & remarks,
                   std::string_view text, ScreenSize size, Tables tables, std::size_t start) {
    auto const room = std::max<std::size_t>(size.lines, 2) - 1;
    std::vector<std::string> lines{title};
    addRemarks(remarks, size.lines / 3, lines);
    lines.emplace_back();
    auto const shown = TerminalText::of(text, tables);
    auto const body = linesOf(shown);
    Drawing drawing;
    if (lines.size() + body.size() <= room) {
        drawing.page = std::max<std::size_t>(body.size(), 1);
        lines.insert(lines.end(), body.begin(), body.end());
    } else if (lines.size() + 1 >= room) {
        auto const all = lines.size() + body.size();
        lines.resize(room - 1);
        lines.push_back("... " + std::to_string(all - room + 1) + " lines more");
    } else {
        drawing.page = room - lines.size() - 1;
        drawing.lastStart = body.size() - drawing.page;
        start = std::min(start, drawing.lastStart);
        auto const first = body.begin() + static_cast<std::ptrdiff_t>(start);
        lines.insert(lines.end(), first, first + static_cast<std::ptrdiff_t>(drawing.page));
        lines.push_back(place(start, drawing.page, body.size()));
    }
    CharacterWidth const width;
    drawing.text = cursorHome;
    for (std::string_view const line : lines) {
        appendLine(drawing.text, line, size.columns, width);
    }
    drawing.text.append(eraseBelow);
    return drawing;
}

} // namespace vxshow::terminal
