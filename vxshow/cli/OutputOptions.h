#pragma once

#include "Vex/Types.h"
#include "vxshow/listing/Plan.h"
#include "vxshow/listing/Shown.h"

#include <optional>

namespace vxshow::cli {

/// The formats that the library's `render` takes.
enum class Format : Vex::U32 { text = 1, compactJson = 2, indentedJson = 3 };

/// The output options, which are the same for every command.
struct Output {
    Format format = Format::text;
    Vex::U32 revision = 2; ///< of the JSON documents
    bool vniDotted = false;

    /// The rows to show in a form of the front end; without, the library renders.
    std::optional<listing::Plan> rows = {};
    /// Where the rows are shown.
    listing::Surface surface = {};
};

} // namespace vxshow::cli
