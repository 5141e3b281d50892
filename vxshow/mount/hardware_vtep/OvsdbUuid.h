#pragma once

#include "Vex/Hash.h"

#include <compare>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vxshow::ovsdb {

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

} // namespace vxshow::ovsdb

template <>
struct std::hash<vxshow::ovsdb::Uuid> {
    std::size_t operator()(vxshow::ovsdb::Uuid const & uuid) const noexcept {
        return Vex::hashMix(uuid.high ^ Vex::hashMix(uuid.low));
    }
};
