#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/KnownMembers.h"

#include <array>
#include <optional>
#include <string_view>

/// What the documents about entries of VNIs have in common: their keys and addresses, and the side
/// of an entry. There can be hundreds of thousands of entries, so what is called for each of them
/// is inline.
namespace vxshow::sources::frr {

inline constexpr std::string_view anEntry = "an object of what is known of it";

/// There are counters between the entries of an object; they are not objects.
inline bool isEntry(text::JsonValue & value) {
    return *value.at() == '{';
}

/// Parses an address; nullopt if it is invalid.
inline std::optional<Nolt::EthAddr> anyMac(text::JsonText const & text) {
    constexpr auto usual = Nolt::EthAddr::maxTextLength;
    if (text.mayHaveLength(usual)) [[likely]] {
        if (auto const mac = Nolt::EthAddr::tryFromString({text.content(), usual})) [[likely]] {
            return mac;
        }
    }
    return Nolt::EthAddr::tryFromString(text.text());
}

/// As `anyMac`, but nullopt for zero, which is not the address of a host.
inline std::optional<Nolt::EthAddr> hostMac(text::JsonText const & text) {
    auto const mac = anyMac(text);
    return mac && !mac->isZero() ? mac : std::nullopt;
}

/// Parses an address; nullopt if it is invalid.
inline std::optional<Nolt::IpAddr> ipv4(text::JsonText const & text) {
    Nolt::IpAddr address;
    auto const * const end = Nolt::IpAddr::readFrom(text.content(), address);
    if (end && *end == '"') [[likely]] {
        return address;
    }
    return Nolt::IpAddr::tryFromString(text.text());
}

/// Counts an invalid text in a VNI as left out.
void leaveOut(Collector & join, Vxlan::Vni vni, std::string_view column, std::string_view text,
              std::string_view expected);

/// The VNI of the key `text`; nullopt if it is invalid, which is counted as left out.
std::optional<Vxlan::Vni> readVniKey(text::JsonText const & text, Collector & join);

/// Calls `take(Vni, JsonValue &)` for the entries of a document by VNI.
template <class Take>
void eachVni(text::JsonReader & json, Collector & join, Take && take) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        join.step();
        if (!isEntry(value)) {
            return;
        }
        if (auto const vni = readVniKey(key, join)) {
            take(*vni, value);
        }
    });
}

/// The side of an entry, and its mobility sequence on that side.
class EntrySide {
public:
    /// The members for it, by their places among `entryNames`.
    enum Name : std::size_t { type, localSequence, remoteSequence, end };

    /// Reads the value of the member `name` if it is one of those. Throws `Refusal`.
    void take(std::size_t name, text::JsonValue & value) {
        switch (name) {
        case type:
            side_ = readSide(value);
            break;
        case localSequence:
        case remoteSequence:
            sequences_[name - localSequence] = value.number(0xFFFFFFFF);
            break;
        default:
            break;
        }
    }

    /// False for an entry on neither side, which was neither learned nor announced.
    bool isKnown() const noexcept { return side_ < sequences_.size(); }

    /// Of an entry that is known.
    Collector::Side side() const noexcept {
        return side_ == 0 ? Collector::Side::local : Collector::Side::remote;
    }

    /// The sequence in effect: that of the side. Throws `Refusal` if it is not among the `members`
    /// of the object that starts at `object`.
    Vex::U32 sequence(text::KnownMembers const & members, char const * object) const {
        members.require(localSequence + side_, object);
        return sequences_[side_];
    }

private:
    static constexpr std::array<text::MemberName, 3> sides{"local", "remote", "auto"};

    /// The index into `sides`. Throws `Refusal` for another text.
    static std::size_t readSide(text::JsonValue & value);

    std::size_t side_ = sides.size();
    std::array<Vex::U32, 2> sequences_{};
};

/// The names of the members of an entry: those of `EntrySide`, then its `own`.
template <class... Own>
constexpr std::array<text::MemberName, EntrySide::end + sizeof...(Own)>
entryNames(Own const *... own) {
    return {"type", "localSequence", "remoteSequence", own...};
}

} // namespace vxshow::sources::frr
