#pragma once

#include "Vex/Types.h"

#include <array>
#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace vxshow::state {

/// The identifier of an Ethernet segment, ten bytes (RFC 7432, 5). Zero: the host is behind one
/// VTEP only.
class EthernetSegment {
public:
    /// Zero.
    constexpr EthernetSegment() = default;

    /// Parses ten bytes in hexadecimal, each of two digits, with colons between them; nullopt if
    /// the text is anything else.
    static std::optional<EthernetSegment> tryFromString(std::string_view text);

    bool isZero() const noexcept { return bytes_ == decltype(bytes_){}; }

    /// "03:44:38:39:ff:ff:01:00:00:01".
    std::string stringValue() const;

    auto operator<=>(EthernetSegment const &) const = default;

private:
    std::array<Vex::U8, 10> bytes_{};
};

} // namespace vxshow::state
