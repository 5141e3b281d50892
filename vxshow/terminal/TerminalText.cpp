#include "vxshow/terminal/TerminalText.h"

#include "vxshow/terminal/ShownCharacter.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <wchar.h>

namespace vxshow::terminal {

namespace {

constexpr auto nowhere = std::numeric_limits<std::size_t>::max();

/// The code point of a character of several bytes.
wchar_t codePointOf(std::string_view character) {
    auto const first = static_cast<unsigned char>(character[0]);
    auto code = static_cast<unsigned>(first) & (0xFFU >> (character.size() + 1));
    for (char const byte : character.substr(1)) {
        code = code << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    return static_cast<wchar_t>(code);
}

/// Whether these bytes, which are not a character, are the beginning of one.
bool isBeginning(std::string_view bytes) {
    return outfmt::detail::leadOf(static_cast<unsigned char>(bytes[0])).length > 1;
}

} // namespace

CharacterWidth::CharacterWidth() : utf8_(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {}

CharacterWidth::~CharacterWidth() {
    if (utf8_) {
        ::freelocale(utf8_);
    }
}

std::size_t CharacterWidth::of(std::string_view character) const {
    if (character.size() == 1 || !utf8_) {
        return 1;
    }
    auto const before = ::uselocale(utf8_);
    int const columns = ::wcwidth(codePointOf(character));
    ::uselocale(before);
    return columns < 0 ? 1 : static_cast<std::size_t>(columns);
}

std::string TerminalText::take(std::string & text) {
    std::string out;
    out.reserve(text.size());
    std::string_view rest = text;
    while (!rest.empty()) {
        auto const next = firstCharacter(rest);
        if (!next.valid && next.length == rest.size()) {
            break;
        }
        bool const keep = rest[0] == '\n' || rest[0] == '\t';
        add(rest.substr(0, next.length), next.valid, keep ? rest.substr(0, 1) : next.shown,
            next.length < rest.size() ? rest[next.length] : '\0', out);
        rest.remove_prefix(next.length);
    }
    text.erase(0, text.size() - rest.size());
    return out;
}

std::string TerminalText::of(std::string_view text, Tables tables) {
    std::string left(text);
    auto const shown = TerminalText(tables).take(left);
    return left.empty() ? shown : shown + "?";
}

/// Adds what is shown for one character of the listing, which the byte `next` follows.
void TerminalText::add(std::string_view bytes, bool isWhole, std::string_view shown, char next,
                       std::string & out) {
    if (bytes[0] == '\n') {
        endLine();
        out.push_back('\n');
        return;
    }
    trackTitles(bytes[0]);
    if (bytes[0] == ' ') {
        endCell(out);
    }
    place_ += bytes.size();
    if (bytes.size() == 1 && isWhole) {
        out.append(shown);
        return;
    }
    auto const end = cellEnd();
    bool const endsCell = inTable_ && (place_ == end ? next == ' ' : next == '\n');
    if (!isWhole && endsCell && isBeginning(bytes)) {
        out.append(bytes.size(), ' ');
        return;
    }
    out.append(shown);
    if (end != nowhere) {
        missing_ += bytes.size() - std::min(width_.of(shown), bytes.size());
    }
}

/// The place of the blank that should end the present cell; `nowhere` in the last column.
std::size_t TerminalText::cellEnd() const {
    return inTable_ && cell_ < cellEnds_.size() ? cellEnds_[cell_] : nowhere;
}

/// Takes a blank at `place_`. A cell that is too long ends at the first one after its end.
void TerminalText::endCell(std::string & out) {
    auto const end = cellEnd();
    if (place_ < end) {
        return;
    }
    // Of a cell that is too long in bytes, what is seen can still be short enough.
    auto const tooLong = place_ - end;
    out.append(missing_ - std::min(missing_, tooLong), ' ');
    missing_ = 0;
    while (cellEnd() <= place_) {
        ++cell_;
    }
}

/// Takes the first byte of a character at `place_`.
void TerminalText::trackTitles(char byte) {
    onlyDashes_ = onlyDashes_ && (byte == '-' || byte == ' ');
    if (byte == ' ') {
        ++blanks_;
        return;
    }
    if (blanks_ >= 2) {
        titles_.push_back(place_);
    }
    blanks_ = 0;
}

void TerminalText::endLine() {
    if (place_ == 0) {
        inTable_ = false;
    } else if (tables_ == Tables::aligned && onlyDashes_ && blanks_ < place_) {
        inTable_ = true;
        cellEnds_.clear();
        for (std::size_t const title : titlesAbove_) {
            cellEnds_.push_back(title - 1);
        }
    }
    titlesAbove_ = std::exchange(titles_, {});
    onlyDashes_ = true;
    blanks_ = 0;
    place_ = 0;
    missing_ = 0;
    cell_ = 0;
}

} // namespace vxshow::terminal
