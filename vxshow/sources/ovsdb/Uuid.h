#pragma once

#include "Vex/KeyedHash.h"
#include "Vex/Types.h"

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

/// Hashes identities with the function of this process, so that no one can choose identities that
/// share a slot.
struct UuidHash {
    std::size_t operator()(Uuid const & uuid) const noexcept {
        return Vex::keyedHash(uuid.high, uuid.low);
    }
};

} // namespace vxshow::sources::ovsdb
