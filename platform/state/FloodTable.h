#pragma once

#include "Nolt/IpAddr.h"
#include "Pelo/Table.h"
#include "Pelo/TableWriter.h"
#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vxlan/Vni.h"

#include <compare>
#include <string>
#include <string_view>

/// The VTEPs that EVPN floods to, as its service shares them with its readers: the small
/// companion of the host table, in the same form.
namespace [[gnu::visibility("default")]] VcsEvpn {

/// A VTEP that receives the flooded traffic of a VNI (the inclusive multicast route of
/// RFC 7432 section 7.3, as RFC 8365 uses it for VXLAN).
struct FloodKey {
    Vxlan::Vni vni;
    Nolt::IpAddr vtepIp;

    auto operator<=>(FloodKey const &) const = default;
};

/// How traffic is flooded to a VTEP. The default denotes a dead slot: nothing is flooded.
class FloodEntry {
public:
    /// The tunnel types, with the numbers of RFC 6514 section 5.
    enum class TunnelType : Vex::U8 {
        none = 0,
        ingressReplication = 6,
    };

    FloodEntry() = default;

    explicit FloodEntry(TunnelType tunnelType) noexcept : tunnelType_(tunnelType) {}

    TunnelType tunnelType() const noexcept { return tunnelType_; }

    bool operator==(FloodEntry const &) const = default;

private:
    TunnelType tunnelType_ = TunnelType::none;
};

/// The encoding of flood entries in shared memory.
struct FloodSchema {
    using Key = FloodKey;
    using Value = FloodEntry;

    static constexpr std::string_view tag = "VcsEvpn::FloodTable";
    static constexpr Vex::U32 keySize = 7;   ///< VNI, VTEP IP
    static constexpr Vex::U32 valueSize = 1; ///< tunnel type

    static void encodeKey(FloodKey const & key, Vex::U8 * out) noexcept;
    static FloodKey decodeKey(Vex::U8 const * in) noexcept;
    static void encodeValue(FloodEntry const & entry, Vex::U8 * out) noexcept;
    static FloodEntry decodeValue(Vex::U8 const * in) noexcept;
};

/// The shared table of flood entries. Walks and look-ups can raise
/// `Pelo::CorruptionDetectedException`; the catcher must pass its text to
/// `handleCorruption`.
class FloodTable : public Vex::Tracked<FloodTable, Vex::Entity>, public Pelo::Table<FloodSchema> {
public:
    static constexpr char const * vexTypeName = "VcsEvpn::FloodTable";

    explicit FloodTable(Pelo::Reader<FloodSchema> reader);

    /// The entry under `key`, or a default one if there is none.
    FloodEntry floodEntry(FloodKey const & key) const { return value(key); }
};

/// Creates and fills a table of flood entries.
using FloodTableWriter = Pelo::TableWriter<FloodTable>;

/// Opens the table in a file. Raises `Pelo::TableError` if it is not a table of flood
/// entries, and `Pelo::CorruptionDetectedException` if it is damaged.
Vex::Ptr<FloodTable> openFloodTable(std::string const & path);

/// Opens the table that `descriptor` refers to; the caller keeps the descriptor. `name` is
/// used in messages. Raises the same errors.
Vex::Ptr<FloodTable> openFloodTable(int descriptor, std::string name);

/// A copy of the table that `descriptor` refers to, which no later change or cut of the file
/// reaches; the caller keeps the descriptor, whose offset moves. Raises the same errors.
Vex::Ptr<FloodTable> copyFloodTable(int descriptor, std::string name);

} // namespace VcsEvpn
