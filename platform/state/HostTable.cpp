#include "state/HostTable.h"

#include "Pelo/Bytes.h"

#include <algorithm>
#include <utility>

namespace [[gnu::visibility("default")]] VcsEvpn {

namespace {

constexpr std::size_t macSize = 6;
constexpr std::size_t hostVniSize = 3;
constexpr std::size_t hostVtepSize = 4;
constexpr std::size_t moveCountSize = 4;
static_assert(HostSchema::keySize == macSize + hostVniSize);
static_assert(HostSchema::valueSize == hostVtepSize + moveCountSize);

} // namespace

void HostSchema::encodeKey(HostKey const & key, Vex::U8 * out) noexcept {
    out = Pelo::writeNumber<macSize>(out, key.mac.value());
    Pelo::writeNumber<hostVniSize>(out, key.vni.value());
}

HostKey HostSchema::decodeKey(Vex::U8 const * in) noexcept {
    Nolt::EthAddr::Bytes mac;
    std::copy_n(in, macSize, mac.begin());
    auto const vni = Pelo::readNumber<hostVniSize>(in + macSize);
    return {Nolt::EthAddr(mac), Vxlan::Vni(static_cast<Vex::U32>(vni))};
}

void HostSchema::encodeValue(Host const & host, Vex::U8 * out) noexcept {
    out = Pelo::writeNumber<hostVtepSize>(out, host.vtepIp().value());
    Pelo::writeNumber<moveCountSize>(out, host.moveCount());
}

Host HostSchema::decodeValue(Vex::U8 const * in) noexcept {
    auto const vtepIp = Pelo::readNumber<hostVtepSize>(in);
    auto const moveCount = Pelo::readNumber<moveCountSize>(in + hostVtepSize);
    return {Nolt::IpAddr(static_cast<Vex::U32>(vtepIp)), static_cast<Vex::U32>(moveCount)};
}

HostTable::HostTable(Pelo::Reader<HostSchema> reader) : Table(std::move(reader)) {}

Vex::Ptr<HostTable> openHostTable(std::string const & path) {
    return Vex::makePtr<HostTable>(Pelo::Reader<HostSchema>::open(path));
}

Vex::Ptr<HostTable> openHostTable(int descriptor, std::string name) {
    return Vex::makePtr<HostTable>(Pelo::Reader<HostSchema>::attach(descriptor, std::move(name)));
}

Vex::Ptr<HostTable> copyHostTable(int descriptor, std::string name) {
    return Vex::makePtr<HostTable>(Pelo::Reader<HostSchema>::copyOf(descriptor, std::move(name)));
}

} // namespace VcsEvpn
