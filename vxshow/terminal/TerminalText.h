#pragma once

#include <cstddef>
#include <locale.h>
#include <string>
#include <string_view>
#include <vector>

namespace vxshow::terminal {

/// How many columns of a terminal a character takes: 0, 1 or 2.
class CharacterWidth {
public:
    CharacterWidth();
    CharacterWidth(CharacterWidth const &) = delete;
    CharacterWidth & operator=(CharacterWidth const &) = delete;
    ~CharacterWidth();

    /// The columns of `character`, one character in UTF-8. 1 if the system does not know it.
    std::size_t of(std::string_view character) const;

private:
    locale_t utf8_; ///< null if the system has none: then every character takes one column
};

/// What becomes of the tables of a listing: the columns of the fixed text are padded by bytes.
enum class Tables : bool { aligned, asTheyAre };

/// Makes of a listing what a terminal shows, as it arrives: each character as `firstCharacter`
/// says, except line feeds and tabs, which stay, and the columns of tables aligned.
///
/// The library pads and cuts cells by bytes, as its fixed form demands. A terminal shows a
/// character of several bytes in two columns, one or none, so what follows its cell would be too
/// far to the left. The blanks that are missing are added at the end of the cell. A cell that is
/// cut inside a character ends in some of its bytes; they become blanks, so that only whole
/// characters are seen.
///
/// A table is what follows a line of dashes, up to an empty line. The line above the dashes has its
/// titles, with two blanks or more between them, and they say where cells end. Outside of tables,
/// as in JSON, nothing is added; nor anywhere if tables are to stay as they are.
class TerminalText {
public:
    explicit TerminalText(Tables tables = Tables::aligned) : tables_(tables) {}

    /// What is shown for the characters of `text`, which are removed from it. One that can continue
    /// in the next piece stays in `text`.
    std::string take(std::string & text);

    /// What is shown for all of `text`.
    static std::string of(std::string_view text, Tables tables = Tables::aligned);

private:
    void add(std::string_view bytes, bool isWhole, std::string_view shown, char next,
             std::string & out);
    std::size_t cellEnd() const;
    void endCell(std::string & out);
    void trackTitles(char byte);
    void endLine();

    CharacterWidth width_;
    Tables tables_;
    bool inTable_ = false;
    std::vector<std::size_t> cellEnds_; ///< of the table: the place of the blank before each title
    std::vector<std::size_t> titlesAbove_; ///< in the line before: the places of its titles
    std::vector<std::size_t> titles_;      ///< in this line so far, as if it had titles
    bool onlyDashes_ = true;               ///< whether this line has only dashes and blanks so far
    std::size_t blanks_ = 0;               ///< how many blanks came last
    std::size_t place_ = 0;                ///< in this line of the listing, in bytes
    std::size_t missing_ = 0;              ///< columns that are due at the end of the cell
    std::size_t cell_ = 0;                 ///< which cell of the row this is
};

} // namespace vxshow::terminal
