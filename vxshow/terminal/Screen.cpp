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
void appendLine(std::string & out, std::string_view line, Kind kind, std::size_t columns,
                CharacterWidth const & width) {
    out.append(eraseRestOfLine);
    auto const color = line.empty() ? std::string_view() : colorOf(kind);
    out.append(color);
    for (std::size_t used = 0; !line.empty();) {
        auto const next = firstCharacter(line);
        used += width.of(next.shown);
        if (used > columns) {
            break;
        }
        out.append(next.shown);
        line.remove_prefix(next.length);
    }
    out.append(color.empty() ? color : endOfColor);
    out.append("\r\n");
}

struct Line {
    std::string_view text;
    Kind kind = Kind::plain;
};

std::vector<Line> linesOf(std::string_view text) {
    std::vector<Line> lines;
    while (!text.empty()) {
        auto const end = std::min(text.find('\n'), text.size());
        lines.push_back({text.substr(0, end)});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// The lines of the listing, told apart.
std::vector<Line> listingLines(std::string_view text, Coloring coloring) {
    auto lines = linesOf(text);
    LineKinds kinds(coloring);
    for (std::size_t at = 0; at < lines.size(); ++at) {
        bool const isLast = at + 1 == lines.size();
        lines[at].kind = kinds.of(lines[at].text, isLast ? std::string_view() : lines[at + 1].text);
    }
    return lines;
}

/// The lines of the remarks, at most `most` and at least one. `rest` keeps the last one if not all
/// fit.
std::vector<Line> remarkLines(std::vector<std::string> const & remarks, std::size_t most,
                              std::string & rest) {
    std::vector<Line> all;
    for (std::string const & remark : remarks) {
        auto const some = linesOf(remark);
        all.insert(all.end(), some.begin(), some.end());
    }
    most = std::max<std::size_t>(most, 1);
    if (all.size() > most) {
        auto const left = all.size() - most + 1;
        rest = std::to_string(left) + (most == 1 ? " remarks" : " remarks more");
        all.resize(most - 1);
        all.push_back({rest});
    }
    for (Line & line : all) {
        line.kind = line.text.starts_with(staleWords) ? Kind::error : Kind::remark;
    }
    return all;
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
                   std::string_view text, ScreenSize size, Tables tables, std::size_t start,
                   std::optional<Coloring> coloring) {
    auto const room = std::max<std::size_t>(size.lines, 2) - 1;
    std::string moreRemarks;
    std::string more;
    std::vector<Line> lines{{title, Kind::header}};
    auto const said = remarkLines(remarks, size.lines / 3, moreRemarks);
    lines.insert(lines.end(), said.begin(), said.end());
    lines.emplace_back();
    auto const shown = TerminalText::of(text, tables);
    auto const body = listingLines(shown, coloring.value_or(Coloring::none));
    Drawing drawing;
    if (lines.size() + body.size() <= room) {
        drawing.page = std::max<std::size_t>(body.size(), 1);
        lines.insert(lines.end(), body.begin(), body.end());
    } else if (lines.size() + 1 >= room) {
        auto const all = lines.size() + body.size();
        more = "... " + std::to_string(all - room + 1) + " lines more";
        lines.resize(room - 1);
        lines.push_back({more});
    } else {
        drawing.page = room - lines.size() - 1;
        drawing.lastStart = body.size() - drawing.page;
        start = std::min(start, drawing.lastStart);
        auto const first = body.begin() + static_cast<std::ptrdiff_t>(start);
        lines.insert(lines.end(), first, first + static_cast<std::ptrdiff_t>(drawing.page));
        more = place(start, drawing.page, body.size());
        lines.push_back({more});
    }
    CharacterWidth const width;
    drawing.text = cursorHome;
    for (Line const & line : lines) {
        appendLine(drawing.text, line.text, coloring ? line.kind : Kind::plain, size.columns,
                   width);
    }
    drawing.text.append(eraseBelow);
    return drawing;
}

} // namespace vxshow::terminal
