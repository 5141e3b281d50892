#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonFields.h"

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

/// As `text::tryReadMac`, but nullopt for zero, which is not the address of a host.
inline std::optional<Nolt::EthAddr> hostMac(text::JsonText const & text) {
    auto const mac = text::tryReadMac(text);
    return mac && !mac->isZero() ? mac : std::nullopt;
}

/// Counts an invalid text in a VNI as left out.
void leaveOut(Collector & join, Subjects about, Vxlan::Vni vni, std::string_view column,
              std::string_view text, std::string_view expected);

/// Counts an entry in a VNI as left out, since its VTEP is IPv6: the listings have IPv4.
void leaveOutIpv6(Collector & join, Subjects about, Vxlan::Vni vni, std::string_view entry,
                  std::string_view address);

/// The VNI of the key `text`; nullopt if it is invalid, which is counted as left out.
std::optional<Vxlan::Vni> readVniKey(text::JsonText const & text, Subjects about, Collector & join);

/// Calls `take(Vni, JsonValue &)` for the entries of a document by VNI, which is about `about`.
template <class Take>
void eachVni(text::JsonReader & json, Subjects about, Collector & join, Take && take) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        join.step();
        if (!isEntry(value)) {
            return;
        }
        if (auto const vni = readVniKey(key, about, join)) {
            take(*vni, value);
        }
    });
}

/// The side of an entry, and its mobility sequence on that side.
class EntrySide {
public:
    /// Each reads the value of one member. Throws `Refusal`.
    void takeType(text::JsonValue & value) { side_ = readSide(value); }

    template <std::size_t side>
    void takeSequence(text::JsonValue & value) {
        sequences_[side] = {true, value.number(0xFFFFFFFF)};
    }

    /// False for an entry on neither side, which was neither learned nor announced.
    bool isKnown() const noexcept { return side_ < sequences_.size(); }

    /// Of an entry that is known.
    Collector::Side side() const noexcept {
        return side_ == 0 ? Collector::Side::local : Collector::Side::remote;
    }

    /// The sequence in effect: that of the side. Throws `Refusal` if the entry, which starts at
    /// `object`, does not have it.
    Vex::U32 sequence(char const * object) const {
        if (!sequences_[side_].isThere) [[unlikely]] {
            text::refuseWithout(side_ == 0 ? "localSequence" : "remoteSequence", object);
        }
        return sequences_[side_].number;
    }

private:
    struct Sequence {
        bool isThere = false;
        Vex::U32 number = 0;
    };

    static constexpr std::array<text::MemberName, 3> sides{"local", "remote", "auto"};

    /// The index into `sides`. Throws `Refusal` for another text.
    static std::size_t readSide(text::JsonValue & value);

    std::size_t side_ = sides.size();
    std::array<Sequence, 2> sequences_{};
};

/// The members for the side, of an entry that has it as `side`.
/// An entry without it is neither local nor remote.
inline constexpr auto typeMember = text::optionalMember(
    "type", [](text::JsonValue & value, auto & entry) { entry.side.takeType(value); });
inline constexpr auto localSequenceMember =
    text::optionalMember("localSequence", [](text::JsonValue & value, auto & entry) {
        entry.side.template takeSequence<0>(value);
    });
inline constexpr auto remoteSequenceMember =
    text::optionalMember("remoteSequence", [](text::JsonValue & value, auto & entry) {
        entry.side.template takeSequence<1>(value);
    });

} // namespace vxshow::sources::frr
