#include "vxshow/state/snapshot/ValuesWriter.h"

#include "outfmt/Utf8.h"

namespace vxshow::state::snapshot {

std::string_view writable(std::string_view text) {
    if (!outfmt::isUtf8(text)) [[unlikely]] {
        throw Unwritable("the name " + Vex::quoted(text) +
                         " is not UTF-8, and a snapshot is nothing else");
    }
    return text;
}

void ValuesWriter::element(std::string_view text) {
    element_.setValue(writable(text));
    printer_.addAttributesJson(1, element_.getArg());
}

void ValuesWriter::text(std::string_view key, std::string_view text) {
    outfmt::StringAttrInfo info(printer_, key);
    info.setValue(writable(text));
    printer_.addAttributesJson(1, info.getArg());
}

void ValuesWriter::number(std::string_view name, Vex::U32 number) {
    auto & info = numbers_.of(name);
    info.setValue(number);
    printer_.addAttributesJson(1, info.getArg());
}

void ValuesWriter::boolean(std::string_view key, bool value) {
    outfmt::BoolAttrInfo info(printer_, key);
    info.setValue(value);
    printer_.addAttributesJson(1, info.getArg());
}

} // namespace vxshow::state::snapshot
