#pragma once

#include "Vex/Types.h"
#include "outfmt/AttrInfo.h"
#include "outfmt/Printer.h"

#include <cstdint>
#include <string_view>

namespace vxshow::cli {

/// Adds single members to the open dictionary of a JSON document, or elements to its open
/// list when the key is empty. The key can be data.
class MemberPrinter {
public:
    explicit MemberPrinter(outfmt::Printer & printer) : printer_(printer) {}

    void text(std::string_view key, std::string_view value) {
        outfmt::StringAttrInfo info(printer_, key);
        info.setValue(value);
        printer_.addAttributesJson(1, info.getArg());
    }

    /// `value` is at most that of a signed number of 64 bits.
    void number(std::string_view key, Vex::U64 value) {
        outfmt::Attr64Info info(printer_, key);
        info.setValue(static_cast<std::int64_t>(value));
        printer_.addAttributesJson(1, info.getArg());
    }

    void boolean(std::string_view key, bool value) {
        outfmt::BoolAttrInfo info(printer_, key);
        info.setValue(value);
        printer_.addAttributesJson(1, info.getArg());
    }

private:
    outfmt::Printer & printer_;
};

} // namespace vxshow::cli
