#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenAddrWithMask.h"
#include "Nolt/IpGenPrefix.h"
#include "Vex/Types.h"
#include "Vxlan/Vni.h"

#include <span>
#include <string_view>
#include <type_traits>
#include <variant>

namespace vxshow::listing {

/// A value that is not known, or that there is none of.
using Unknown = std::monostate;

/// One cell: the value itself, so that each form writes it in its own way. Text is a view of a
/// string in the model, which stays where it is as long as the command does.
using Cell = std::variant<Unknown, std::string_view, Vex::U64, Nolt::EthAddr, Nolt::IpAddr,
                          Nolt::IpGenAddr, Nolt::IpGenAddrWithMask, Nolt::IpGenPrefix, Vxlan::Vni>;
static_assert(std::is_trivially_copyable_v<Cell>, "rows are kept and sorted by the million");

/// The cells of one row, in the order of the table's columns.
using Row = std::span<Cell const>;

inline bool isKnown(Cell const & cell) noexcept {
    return cell.index() != 0;
}

/// The cell of an address that may be absent.
inline Cell knownOrNone(Nolt::IpGenAddr const & address) noexcept {
    return address.isNone() ? Cell() : Cell(address);
}

/// The cell of a name; no name is empty.
inline Cell knownOrNone(std::string_view name) noexcept {
    return name.empty() ? Cell() : Cell(name);
}

/// The cell of a counter. Where it is not kept, 0 means that it is not known.
inline Cell counted(Vex::U64 count, bool isKept) noexcept {
    return count == 0 && !isKept ? Cell() : Cell(count);
}

/// Takes rows one by one. A row is valid only during the call.
class RowSink {
public:
    RowSink() = default;
    RowSink(RowSink const &) = delete;
    RowSink & operator=(RowSink const &) = delete;
    virtual ~RowSink() = default;

    virtual void row(Row row) = 0;
};

} // namespace vxshow::listing
