#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace vxshow::terminal {

/// What a key asks of a screen.
enum class Key { none, quit, lineUp, lineDown, pageUp, pageDown, top, bottom };

/// The key at the start of `typed`, which is removed from it: a letter, or a sequence of an arrow
/// or a page key as terminals send it (ECMA-48, in the form of xterm). `Key::none` for any other
/// key, and if `typed` is empty.
Key takeKey(std::string_view & typed);

/// The keys that are typed on the terminal of standard input.
class Keys {
public:
    Keys();
    Keys(Keys const &) = delete;
    Keys & operator=(Keys const &) = delete;
    ~Keys();

    /// Waits for a key, for at most `time`. `Key::none` if that is over, or none can be typed.
    Key wait(std::chrono::milliseconds time);

private:
    bool arrive_; ///< whether keys can be typed
    std::string typed_;
};

} // namespace vxshow::terminal
