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

/// The hosts that EVPN has learned, as its service shares them with whoever wants to read
/// along: one fixed-size entry per MAC address and VNI, in shared memory, since the service
/// holds a million of them and no reader should take a copy to show a few.
namespace [[gnu::visibility("default")]] VcsEvpn {

/// A MAC address in a VNI (the MAC/IP advertisement route of RFC 7432 section 7.2, as
/// RFC 8365 uses it for VXLAN).
struct HostKey {
    Nolt::EthAddr mac;
    Vxlan::Vni vni;

    auto operator<=>(HostKey const &) const = default;
};

/// Where a host is. The default, all fields zero, denotes a dead slot: no host there.
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

/// How hosts lie in the shared memory.
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

/// The shared table of hosts. Walking it, and every look into it, may raise
/// `Pelo::CorruptionDetectedException`; who catches it hands its text to
/// `handleCorruption`.
class HostTable : public Vex::Tracked<HostTable, Vex::Entity>, public Pelo::Table<HostSchema> {
public:
    static constexpr char const * vexTypeName = "VcsEvpn::HostTable";

    explicit HostTable(Pelo::Reader<HostSchema> reader);

    /// The host of that key, or a default-made one when there is none.
    Host host(HostKey const & key) const { return value(key); }
};

/// Makes and fills a table of hosts.
using HostTableWriter = Pelo::TableWriter<HostTable>;

/// Opens the table in a file. Raises `Pelo::TableError` when there is no table of hosts
/// there, and `Pelo::CorruptionDetectedException` when it is damaged.
Vex::Ptr<HostTable> openHostTable(std::string const & path);

/// Opens the table behind `descriptor`, which stays the caller's; messages call it `name`.
/// Errors as for a file.
Vex::Ptr<HostTable> openHostTable(int descriptor, std::string name);

} // namespace VcsEvpn
