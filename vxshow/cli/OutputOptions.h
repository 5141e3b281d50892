#pragma once

#include "Vex/Types.h"

namespace vxshow::cli {

/// The formats that the library's `render` takes.
enum class Format : Vex::U32 { text = 1, compactJson = 2, indentedJson = 3 };

/// The output options, which are the same for every command.
struct Output {
    Format format = Format::text;
    Vex::U32 revision = 2; ///< of the JSON documents
    bool vniDotted = false;
};

} // namespace vxshow::cli
