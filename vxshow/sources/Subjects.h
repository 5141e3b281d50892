#pragma once

#include "Vex/Types.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/SourceNames.h"

#include <compare>

namespace vxshow::sources {

/// The kinds of entry that a source has and listings show.
enum class Subject : Vex::U8 {
    localMacs = 1, ///< with the flood lists
    remoteMacs = 2,
    localBindings = 4,
    remoteBindings = 8,
    routers = 16,
};

/// A set of them: what a finding is about, or what a listing shows.
class Subjects {
public:
    constexpr Subjects() = default;

    constexpr Subjects(Subject one) noexcept : bits_(static_cast<Vex::U8>(one)) {}

    static constexpr Subjects every() noexcept { return Subjects(Vex::U8{31}); }

    constexpr Subjects operator|(Subjects other) const noexcept {
        return Subjects(static_cast<Vex::U8>(bits_ | other.bits_));
    }

    constexpr bool intersects(Subjects other) const noexcept { return (bits_ & other.bits_) != 0; }

    auto operator<=>(Subjects const &) const = default;

private:
    explicit constexpr Subjects(Vex::U8 bits) noexcept : bits_(bits) {}

    Vex::U8 bits_ = 0;
};

constexpr Subjects operator|(Subject one, Subject other) noexcept {
    return Subjects(one) | other;
}

inline constexpr Subjects macsOfBothSides = Subject::localMacs | Subject::remoteMacs;

/// Whether the selection shows what a source of that role has learned itself: that is received
/// from a switch, and advertised to any other source but QVX.
bool showsLocal(state::Selection const & selection, state::Role role);

/// Whether the selection shows what a source of that role was told: the other way round.
bool showsRemote(state::Selection const & selection, state::Role role);

/// What the selection shows of a source of that role.
Subjects subjectsShown(state::Selection const & selection, state::Role role);

} // namespace vxshow::sources
