#pragma once

namespace vxshow::system {

/// Has the terminal on standard input hand over each key at once, without showing it, from the
/// first `start` until `restore`. Signals such as that of Ctrl-C are sent as before.
class RawTerminal {
public:
    /// Returns whether keys arrive. They do not if standard input is no terminal, or this process
    /// is not in its foreground: changing the terminal would stop it.
    static bool start() noexcept;

    /// Restores the settings from before, if they were changed. Async-signal-safe.
    static void restore() noexcept;
};

} // namespace vxshow::system
