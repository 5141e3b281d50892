#pragma once

#include "Nolt/EthAddr.h"
#include "Quay/Seqno32.h"

#include <cstddef>

namespace VxlanController::Cli {

/// The two kinds of MAC table, each a section of its own.
enum class TableKind { ucast, bum };

/// The longest row, its line end included; a longer one is cut there without a sign.
inline constexpr std::size_t maxRowLength = 1023;

/// A MAC address in the display form of the text tables, as the printer takes values.
class DisplayMac {
public:
    static constexpr std::size_t maxTextLength = Nolt::EthAddr::maxDisplayLength;

    explicit DisplayMac(Nolt::EthAddr const & mac) noexcept : mac_(mac) {}

    char * writeTo(char * out) const noexcept { return mac_.writeDisplayTo(out); }

private:
    Nolt::EthAddr const & mac_;
};

/// A move count as both forms of output show it: 32 bits with a sign.
inline int signedCount(Quay::Seqno32 count) noexcept {
    return static_cast<int>(count.value());
}

} // namespace VxlanController::Cli
