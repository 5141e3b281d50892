#pragma once

#include "outfmt/AttrArg.h"
#include "outfmt/OutputBuffer.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace [[gnu::visibility("default")]] outfmt {

/// Writes JSON documents (RFC 8259), each followed by a newline.
///
/// The operations and their requirements are documented in Printer, which calls them. A
/// call that does not fit the open containers throws std::logic_error before it writes
/// anything.
class JsonWriter {
public:
    enum class Layout : std::uint8_t {
        compact,  ///< no spaces and no line breaks
        indented, ///< one member per line, two spaces per level
    };

    /// `buffer` must outlive the writer.
    JsonWriter(OutputBuffer & buffer, Layout layout) : buffer_(buffer), layout_(layout) {}

    void start();
    void end();
    void startDict(std::string_view key);
    void endDict();
    void startList(std::string_view key);
    void endList();
    void startListEntry();
    void endListEntry();
    void addAttributes(std::span<AttrArg const * const> attributes);

private:
    /// A document is the top-level dictionary, an entry is a dictionary in a list.
    enum class Container : std::uint8_t { document, dictionary, list, entry };

    struct Level {
        Container container;
        bool empty = true;
    };

    bool innermostIs(Container container) const;
    std::size_t levelsWithoutOpenLists(char const * call) const;
    void beginElement();
    void appendKey(std::string_view key);
    void open(Container container);
    void closeDownTo(std::size_t levels);
    void closeInnermost();
    void appendLineBreak();
    void appendValue(AttrArg const & attribute);
    void copyAttributes(std::span<AttrArg const * const> attributes, std::size_t most);

    std::size_t indentation() const { return 2 * levels_.size(); }

    OutputBuffer & buffer_;
    Layout layout_;
    std::vector<Level> levels_;
};

} // namespace outfmt
