#pragma once

#include "outfmt/OutputBuffer.h"
#include "vxshow/listing/Cell.h"

#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

/// The text of cells, as several forms write it.
namespace vxshow::listing {

/// How MAC addresses and VNIs are written.
struct CellStyle {
    bool displayMac = false; ///< 0000.5e00.5311, as in the fixed text, and not 00:00:5e:00:53:11
    bool dottedVni = false;  ///< 0.16.2, and not 4098
};

/// The most bytes that `writeValue` writes.
inline constexpr std::size_t maxValueLength = Nolt::IpGenAddrWithMask::maxTextLength;

/// Writes the text of a cell that is neither unknown nor text, and returns its end. Never more than
/// `maxValueLength` bytes.
inline char * writeValue(Cell const & cell, char * out, CellStyle style) {
    struct Writer {
        char * out;
        CellStyle style;

        char * operator()(Unknown) const { return out; }

        char * operator()(std::string_view) const { return out; }

        char * operator()(Vex::U64 number) const {
            return std::to_chars(out, out + maxValueLength, number).ptr;
        }

        char * operator()(Nolt::EthAddr mac) const {
            return style.displayMac ? mac.writeDisplayTo(out) : mac.writeTo(out);
        }

        char * operator()(Nolt::IpAddr ip) const { return ip.writeTo(out); }

        char * operator()(Nolt::IpGenAddr const & ip) const { return ip.writeTo(out); }

        char * operator()(Nolt::IpGenAddrWithMask const & ip) const { return ip.writeTo(out); }

        char * operator()(Nolt::IpGenPrefix const & prefix) const { return prefix.writeTo(out); }

        char * operator()(Vxlan::Vni vni) const {
            return style.dottedVni ? vni.writeTo(out, true) : (*this)(Vex::U64{vni.value()});
        }
    };

    return std::visit(Writer{out, style}, cell);
}

/// Adds the text of such a cell to the buffer.
inline void appendValue(outfmt::OutputBuffer & buffer, Cell const & cell, CellStyle style) {
    char * const out = buffer.reserve(maxValueLength);
    buffer.commit(static_cast<std::size_t>(writeValue(cell, out, style) - out));
}

/// Adds `byte` as an escape: a backslash, `x`, and two hexadecimal digits.
void appendEscaped(std::string & text, char byte);

} // namespace vxshow::listing
