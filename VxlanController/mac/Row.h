#pragma once

#include "Nolt/EthAddr.h"
#include "Quay/Seqno32.h"

#include <cstddef>

namespace VxlanController::Cli {

/// The two kinds of rows; each has a section of its own.
inline constexpr char const * unicastRows = "ucast";
inline constexpr char const * floodRows = "bum";

/// The most bytes of a row, including its line end. A longer row is cut there silently.
inline constexpr std::size_t maxRowLength = 1023;

/// A MAC address that the printer writes in the display form of the text tables.
class DisplayMac {
public:
    static constexpr std::size_t maxTextLength = Nolt::EthAddr::maxDisplayLength;

    explicit DisplayMac(Nolt::EthAddr const & mac) noexcept : mac_(mac) {}

    char * writeTo(char * out) const noexcept { return mac_.writeDisplayTo(out); }

private:
    Nolt::EthAddr const & mac_;
};

/// A move count as text and JSON show it: a signed 32-bit number.
inline int signedCount(Quay::Seqno32 count) noexcept {
    return static_cast<int>(count.value());
}

} // namespace VxlanController::Cli
