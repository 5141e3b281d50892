#include "state/FloodTable.h"

#include "Pelo/Bytes.h"

#include <utility>

namespace [[gnu::visibility("default")]] VcsEvpn {

namespace {

constexpr std::size_t floodVniSize = 3;
constexpr std::size_t floodVtepSize = 4;
constexpr std::size_t tunnelTypeSize = 1;
static_assert(FloodSchema::keySize == floodVniSize + floodVtepSize);
static_assert(FloodSchema::valueSize == tunnelTypeSize);

} // namespace

void FloodSchema::encodeKey(FloodKey const & key, Vex::U8 * out) noexcept {
    out = Pelo::writeNumber<floodVniSize>(out, key.vni.value());
    Pelo::writeNumber<floodVtepSize>(out, key.vtepIp.value());
}

FloodKey FloodSchema::decodeKey(Vex::U8 const * in) noexcept {
    auto const vni = Pelo::readNumber<floodVniSize>(in);
    auto const vtepIp = Pelo::readNumber<floodVtepSize>(in + floodVniSize);
    return {Vxlan::Vni(static_cast<Vex::U32>(vni)), Nolt::IpAddr(static_cast<Vex::U32>(vtepIp))};
}

void FloodSchema::encodeValue(FloodEntry const & entry, Vex::U8 * out) noexcept {
    Pelo::writeNumber<tunnelTypeSize>(out, static_cast<Vex::U8>(entry.tunnelType()));
}

FloodEntry FloodSchema::decodeValue(Vex::U8 const * in) noexcept {
    return FloodEntry(static_cast<FloodEntry::TunnelType>(in[0]));
}

FloodTable::FloodTable(Pelo::Reader<FloodSchema> reader) : Table(std::move(reader)) {}

Vex::Ptr<FloodTable> openFloodTable(std::string const & path) {
    return Vex::makePtr<FloodTable>(Pelo::Reader<FloodSchema>::open(path));
}

Vex::Ptr<FloodTable> openFloodTable(int descriptor, std::string name) {
    return Vex::makePtr<FloodTable>(Pelo::Reader<FloodSchema>::attach(descriptor, std::move(name)));
}

Vex::Ptr<FloodTable> copyFloodTable(int descriptor, std::string name) {
    return Vex::makePtr<FloodTable>(Pelo::Reader<FloodSchema>::copyOf(descriptor, std::move(name)));
}

} // namespace VcsEvpn
