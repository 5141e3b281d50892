#pragma once

#include "outfmt/Utf8.h"
#include "vxshow/text/ControlCharacters.h"

#include <cstddef>
#include <string_view>

namespace vxshow::terminal {

/// One character of a text, and what a terminal shows for it.
struct ShownCharacter {
    std::size_t length;     ///< in the text, in bytes
    bool valid;             ///< whether it is a whole character in UTF-8
    std::string_view shown; ///< the character itself, or a question mark
};

/// The first character of `text`, which is not empty. A control character, an invisible one, and
/// bytes that are not UTF-8 are shown as a question mark: names come from snapshots and from the
/// network, and must neither control the terminal nor look like other names.
inline ShownCharacter firstCharacter(std::string_view text) noexcept {
    auto const sequence = outfmt::firstUtf8Sequence(text);
    auto const character = text.substr(0, sequence.length);
    bool const isControl =
        text::isControl(character[0]) ||
        (character.size() == 2 && text::isLateControl(character[0], character[1]));
    bool const hidden = !sequence.valid || isControl || text::isInvisible(character);
    return {sequence.length, sequence.valid, hidden ? std::string_view("?") : character};
}

} // namespace vxshow::terminal
