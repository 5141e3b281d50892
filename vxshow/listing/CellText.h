#pragma once

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
            // Most counts have one digit.
            if (number < 10) {
                *out = static_cast<char>('0' + number);
                return out + 1;
            }
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

/// The last cell of a column, if it is of a kind that is often the same in the next row, and what
/// was written for it. A name is recognised by its place in memory: names of the model stay there.
class LastCell {
public:
    /// Whether the cell is of such a kind.
    static bool canRepeat(Cell const & cell) {
        return std::holds_alternative<std::string_view>(cell) ||
               std::holds_alternative<Vxlan::Vni>(cell);
    }

    /// Whether the cell, which can repeat, is the last one.
    bool is(Cell const & cell) const {
        if (auto const * name = std::get_if<std::string_view>(&cell)) {
            auto const * last = std::get_if<std::string_view>(&cell_);
            return last && last->data() == name->data() && last->size() == name->size();
        }
        auto const * last = std::get_if<Vxlan::Vni>(&cell_);
        return last && *last == *std::get_if<Vxlan::Vni>(&cell);
    }

    /// Makes `cell` the last one; its text is to be replaced.
    std::string & startText(Cell const & cell) {
        cell_ = cell;
        return text_;
    }

    std::string const & text() const { return text_; }

private:
    Cell cell_;
    std::string text_;
};

/// Adds `byte` as an escape: a backslash, `x`, and two hexadecimal digits.
void appendEscaped(std::string & text, char byte);

} // namespace vxshow::listing
