#include "outfmt/JsonWriter.h"

#include "outfmt/JsonText.h"
#include "outfmt/ReservedRoom.h"

#include <charconv>
#include <stdexcept>
#include <string>

namespace [[gnu::visibility("default")]] outfmt {
namespace {

[[noreturn]] void misuse(char const * call, char const * reason) {
    throw std::logic_error(std::string("outfmt: ") + call + ": " + reason);
}

constexpr std::size_t longestNumber = 20; // -9223372036854775808

[[gnu::always_inline]] inline void copyValue(detail::ReservedRoom & room,
                                             AttrArg const & attribute) {
    switch (attribute.kind) {
    case AttrKind::integer32:
    case AttrKind::integer64: {
        char * const number = room.reserve(longestNumber);
        char * const end = std::to_chars(number, number + longestNumber, attribute.number).ptr;
        room.commit(static_cast<std::size_t>(end - number));
        break;
    }
    case AttrKind::string:
        room.append(attribute.quotedText);
        break;
    case AttrKind::boolean:
        room.append(attribute.number != 0 ? std::string_view("true") : std::string_view("false"));
        break;
    }
}

} // namespace

void JsonWriter::start() {
    if (!levels_.empty()) {
        misuse("start()", "the document before has not ended");
    }
    open(Container::document);
}

void JsonWriter::end() {
    if (levels_.empty()) {
        misuse("end()", "no document was started");
    }
    closeDownTo(0);
    buffer_.append('\n');
}

void JsonWriter::startDict(std::string_view key) {
    closeDownTo(levelsWithoutOpenLists("startDict()"));
    beginElement();
    appendKey(key);
    open(Container::dictionary);
}

void JsonWriter::endDict() {
    std::size_t levels = levelsWithoutOpenLists("endDict()");
    if (levels_[levels - 1].container != Container::dictionary) {
        misuse("endDict()", "no keyed dictionary is open");
    }
    closeDownTo(levels - 1);
}

void JsonWriter::startList(std::string_view key) {
    if (levels_.empty() || innermostIs(Container::list)) {
        misuse("startList()", "a keyed list stands in a dictionary");
    }
    beginElement();
    appendKey(key);
    open(Container::list);
}

void JsonWriter::endList() {
    if (!innermostIs(Container::list)) {
        misuse("endList()", "no list is open");
    }
    closeInnermost();
}

void JsonWriter::startListEntry() {
    if (!innermostIs(Container::list)) {
        misuse("startListEntry()", "no list is open");
    }
    beginElement();
    open(Container::entry);
}

void JsonWriter::endListEntry() {
    if (!innermostIs(Container::entry)) {
        misuse("endListEntry()", "no list entry is open");
    }
    closeInnermost();
}

void JsonWriter::addAttributes(std::span<AttrArg const * const> attributes) {
    if (levels_.empty()) {
        misuse("addAttributesJson()", "no document was started");
    }
    bool const bare = innermostIs(Container::list);
    bool quoted = true;
    for (AttrArg const * attribute : attributes) {
        if (attribute->key.empty() != bare) {
            misuse("addAttributesJson()",
                   bare ? "a list element has no key" : "an attribute needs a key");
        }
        quoted &= attribute->isQuoted;
    }
    constexpr std::size_t separators = 3; // a comma, a line break, and the space after a key
    std::size_t const most =
        attributes.size() * (AttrArg::longestQuoted + longestNumber + separators + indentation());
    if (quoted && most <= OutputBuffer::maxReserve) [[likely]] {
        copyAttributes(attributes, most);
        return;
    }
    for (AttrArg const * attribute : attributes) {
        beginElement();
        if (!bare) {
            appendKey(attribute->key);
        }
        appendValue(*attribute);
    }
}

/// Writes the attributes into the buffer, which must have room for `most` bytes.
void JsonWriter::copyAttributes(std::span<AttrArg const * const> attributes, std::size_t most) {
    bool const indented = layout_ == Layout::indented;
    std::size_t const blanks = indentation();
    bool empty = levels_.back().empty;
    char * const begin = buffer_.reserve(most);
    detail::ReservedRoom room(begin);
    for (AttrArg const * attribute : attributes) {
        if (!empty) {
            room.append(',');
        }
        empty = false;
        if (indented) {
            room.append('\n');
            room.fill(' ', blanks);
        }
        if (!attribute->key.empty()) {
            room.append(attribute->quotedKey);
            if (indented) {
                room.append(' ');
            }
        }
        copyValue(room, *attribute);
    }
    levels_.back().empty = empty;
    buffer_.commit(static_cast<std::size_t>(room.end() - begin));
}

bool JsonWriter::innermostIs(Container container) const {
    return !levels_.empty() && levels_.back().container == container;
}

/// The number of levels that stay open if innermost lists, each with the dictionary whose
/// member it is, are taken as finished. The document itself is never finished this way.
std::size_t JsonWriter::levelsWithoutOpenLists(char const * call) const {
    std::size_t levels = levels_.size();
    while (levels > 0 && levels_[levels - 1].container == Container::list) {
        levels -= 2; // a list's parent is always a dictionary
    }
    if (levels == 0) {
        misuse(call, levels_.empty() ? "no document was started"
                                     : "a list of the document itself is open");
    }
    return levels;
}

void JsonWriter::beginElement() {
    if (!levels_.back().empty) {
        buffer_.append(',');
    }
    levels_.back().empty = false;
    appendLineBreak();
}

void JsonWriter::appendKey(std::string_view key) {
    appendJsonString(buffer_, key);
    buffer_.append(layout_ == Layout::indented ? ": " : ":");
}

void JsonWriter::open(Container container) {
    levels_.push_back({container});
    buffer_.append(container == Container::list ? '[' : '{');
}

void JsonWriter::closeDownTo(std::size_t levels) {
    while (levels_.size() > levels) {
        closeInnermost();
    }
}

void JsonWriter::closeInnermost() {
    bool const empty = levels_.back().empty;
    bool const list = levels_.back().container == Container::list;
    levels_.pop_back();
    if (!empty) {
        appendLineBreak();
    }
    buffer_.append(list ? ']' : '}');
}

void JsonWriter::appendLineBreak() {
    if (layout_ == Layout::indented) {
        buffer_.append('\n');
        buffer_.fill(' ', indentation());
    }
}

void JsonWriter::appendValue(AttrArg const & attribute) {
    switch (attribute.kind) {
    case AttrKind::integer32:
    case AttrKind::integer64: {
        char * number = buffer_.reserve(longestNumber);
        char * end = std::to_chars(number, number + longestNumber, attribute.number).ptr;
        buffer_.commit(static_cast<std::size_t>(end - number));
        break;
    }
    case AttrKind::string:
        appendJsonString(buffer_, attribute.text);
        break;
    case AttrKind::boolean:
        buffer_.append(attribute.number != 0 ? "true" : "false");
        break;
    }
}

} // namespace outfmt
