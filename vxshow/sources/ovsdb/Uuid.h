#pragma once

#include "Vex/Types.h"

#include <array>
#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vxshow::sources::ovsdb {

/// The identity of a row.
struct Uuid {
    Vex::U64 high = 0;
    Vex::U64 low = 0;

    bool operator==(Uuid const &) const = default;
    auto operator<=>(Uuid const &) const = default;
};

/// Reads 8e81973e-0bec-47b0-b898-d190f9ebdacc, in lower case as servers write it.
std::optional<Uuid> readUuid(std::string_view text) noexcept;

/// The text that `readUuid` reads.
std::string textOf(Uuid const & uuid);

/// Hashes identities with a function that is drawn at random once per process, so that no one can
/// choose identities that share a slot.
///
/// It is strongly universal ("pair-multiply-shift": Thorup, High Speed Hashing for Integers and
/// Strings, 2015, section 3.5): any two identities have the same hash with probability 1 in 2^32.
class UuidHash {
public:
    /// Raises `std::system_error` if there is no source of randomness.
    UuidHash() : factors_(drawn()) {}

    std::size_t operator()(Uuid const & uuid) const noexcept {
        auto const pair = [](Vex::U64 number, Vex::U64 a, Vex::U64 b) {
            return (a + (number >> 32)) * (b + (number & 0xFFFFFFFFU));
        };
        auto const sum = pair(uuid.high, factors_[0], factors_[1]) +
                         pair(uuid.low, factors_[2], factors_[3]) + factors_[4];
        return sum >> 32;
    }

private:
    using Factors = std::array<Vex::U64, 5>;

    static Factors const & drawn();

    Factors factors_;
};

} // namespace vxshow::sources::ovsdb
