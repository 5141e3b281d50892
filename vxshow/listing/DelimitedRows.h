#pragma once

#include "outfmt/OutputBuffer.h"
#include "vxshow/listing/CellText.h"
#include "vxshow/listing/Shown.h"

#include <string>
#include <vector>

namespace vxshow::listing {

/// What stands around a cell in a form that has a separator between cells and nothing else.
struct Delimiters {
    std::string before;
    std::string after;
    std::string unknown; ///< in place of both and of a cell that is not known
};

/// Writes rows as lines of cells between delimiters.
///
/// A row has room in the buffer once for each cell, and texts are copied as the few bytes that they
/// are. A name or a VNI that is the same as in the row before, as most are, is one such copy
/// together with its delimiters.
class DelimitedRows final : public RowSink {
public:
    /// Adds a name to the text, as the form writes it.
    using AppendName = void (*)(std::string & text, std::string_view name);

    /// `delimiters` has those of each column that is shown. None is longer than 1,000 bytes.
    DelimitedRows(outfmt::OutputBuffer & buffer, std::span<std::size_t const> columns,
                  std::vector<Delimiters> delimiters, AppendName appendName);

    void row(Row cells) override;

private:
    struct Column {
        std::size_t place;
        Delimiters delimiters;
        LastCell last = {}; ///< with its delimiters
    };

    void appendRepeating(Column & column, Cell const & cell);
    void appendValue(Column const & column, Cell const & cell);

    outfmt::OutputBuffer & buffer_;
    std::vector<Column> columns_;
    AppendName appendName_;
};

} // namespace vxshow::listing
