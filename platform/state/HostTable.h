#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Pelo/Table.h"
#include "Pelo/TableWriter.h"
#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vxlan/Vni.h"

#include <compare>
#include <string>
#include <string_view>

/// The hosts that EVPN has learned, as its service shares them with its readers: one
/// fixed-size entry per MAC address and VNI, in shared memory, since the service holds a
/// million of them and a reader should not copy them all to show a few.
namespace [[gnu::visibility("default")]] VcsEvpn {

/// A MAC address in a VNI (the MAC/IP advertisement route of RFC 7432 section 7.2, as
/// RFC 8365 uses it for VXLAN).
struct HostKey {
    Nolt::EthAddr mac;
    Vxlan::Vni vni;

    auto operator<=>(HostKey const &) const = default;
};

/// Where a host is. The default, all fields zero, denotes a dead slot: no host.
class Host {
public:
    Host() = default;

    Host(Nolt::IpAddr vtepIp, Vex::U32 moveCount) noexcept
        : vtepIp_(vtepIp), moveCount_(moveCount) {}

    /// The VTEP behind which the address lies.
    Nolt::IpAddr vtepIp() const noexcept { return vtepIp_; }

    /// Moves between VTEPs since the address was first learned (the sequence number of the
    /// MAC mobility community, RFC 7432 section 7.7).
    Vex::U32 moveCount() const noexcept { return moveCount_; }

    bool operator==(Host const &) const = default;

private:
    Nolt::IpAddr vtepIp_;
    Vex::U32 moveCount_ = 0;
};

/// The encoding of hosts in shared memory.
struct HostSchema {
    using Key = HostKey;
    using Value = Host;

    static constexpr std::string_view tag = "VcsEvpn::HostTable";
    static constexpr Vex::U32 keySize = 9;   ///< MAC address, VNI
    static constexpr Vex::U32 valueSize = 8; ///< VTEP IP, move count

    static void encodeKey(HostKey const & key, Vex::U8 * out) noexcept;
    static HostKey decodeKey(Vex::U8 const * in) noexcept;
    static void encodeValue(Host const & host, Vex::U8 * out) noexcept;
    static Host decodeValue(Vex::U8 const * in) noexcept;
};

/// The shared table of hosts. Walks and look-ups can raise
/// `Pelo::CorruptionDetectedException`; the catcher must pass its text to
/// `handleCorruption`.
class HostTable : public Vex::Tracked<HostTable, Vex::Entity>, public Pelo::Table<HostSchema> {
public:
    static constexpr char const * vexTypeName = "VcsEvpn::HostTable";

    explicit HostTable(Pelo::Reader<HostSchema> reader);

    /// The host under `key`, or a default one if there is none.
    Host host(HostKey const & key) const { return value(key); }
};

/// Creates and fills a table of hosts.
using HostTableWriter = Pelo::TableWriter<HostTable>;

/// Opens the table in a file. Raises `Pelo::TableError` if it is not a table of hosts,
/// and `Pelo::CorruptionDetectedException` if it is damaged.
Vex::Ptr<HostTable> openHostTable(std::string const & path);

/// Opens the table that `descriptor` refers to; the caller keeps the descriptor. `name` is
/// used in messages. Raises the same errors.
Vex::Ptr<HostTable> openHostTable(int descriptor, std::string name);

/// A copy of the table that `descriptor` refers to, which no later change or cut of the file
/// reaches; the caller keeps the descriptor, whose offset moves. Raises the same errors.
Vex::Ptr<HostTable> copyHostTable(int descriptor, std::string name);

} // namespace VcsEvpn
