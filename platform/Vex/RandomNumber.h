#pragma once

#include "Vex/Hash.h"
#include "Vex/Types.h"

#include <atomic>
#include <chrono>
#include <exception>

namespace Vex {

/// A number that no one outside this process can guess as long as it is not shown: the result of
/// `draw()`; or, if that raises an exception because the system has no randomness to give, a
/// mixture of two clocks, the addresses at which the loader has put this process, and a count.
/// The mixture can be guessed by someone on the same machine, but not by a host that only
/// sends packets; and a process that could not start would be of less use.
template <class Draw>
U64 randomNumber(Draw && draw) noexcept {
    try {
        return draw();
    } catch (std::exception const &) {
        static std::atomic<U64> count{0};
        auto const address = [](auto const * object) { return reinterpret_cast<U64>(object); };
        U64 mixture =
            hashMix(static_cast<U64>(std::chrono::steady_clock::now().time_since_epoch().count()));
        mixture =
            hashMix(mixture ^
                    static_cast<U64>(std::chrono::system_clock::now().time_since_epoch().count()));
        mixture = hashMix(mixture ^ address(&count));
        mixture = hashMix(mixture ^ address(&mixture));
        return hashMix(mixture + count.fetch_add(1));
    }
}

} // namespace Vex
