#pragma once

#include "Vex/Assert.h"
#include "outfmt/AttrArg.h"
#include "outfmt/Renderer.h"
#include "outfmt/TextValue.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

/// The attributes of the JSON output. An info is created once before a loop and only its
/// value is set for each entry, so that a listing of millions of entries allocates
/// nothing for them.
namespace [[gnu::visibility("default")]] outfmt {

namespace detail {

/// The JSON form of a key, if it needs no escapes and is short.
class QuotedKey {
public:
    static constexpr std::size_t longest = 32;

    explicit QuotedKey(std::string_view key) noexcept;

    std::string_view view() const noexcept { return {text_, length_}; }

private:
    char text_[longest];
    std::size_t length_ = 0;
};

} // namespace detail

/// The base of all attribute infos: the mode of the printer they are for, a key, a kind,
/// and a value once one is set.
///
/// Key and text are stored with their quotes, as they are printed, so that printing an
/// entry only copies them.
template <AttrKind kind>
class AttrInfo {
public:
    /// For use with `printer`. The key is not copied and must outlive the info, as a
    /// literal does; an empty key makes a bare list element.
    AttrInfo(Renderer const & printer, std::string_view key) : AttrInfo(printer.mode(), key) {}

    /// The same for a printer with this mode(), 1 or 2.
    AttrInfo(unsigned mode, std::string_view key)
        : arg_{.key = key, .kind = kind, .mode = mode}, keyText_(key) {
        arg_.quotedKey = keyText_.view();
        arg_.isQuoted = kind != AttrKind::string && keyIsQuoted();
    }

    AttrInfo(AttrInfo const &) = delete;
    AttrInfo & operator=(AttrInfo const &) = delete;

    /// The argument for addAttributesJson(), which refers to this info and is valid until
    /// the next setValue(). Asserts that a value was set and that the mode is 1 or 2.
    AttrArg const & getArg() const {
        Vex::assertThat(hasValue_, "hasValue");
        Vex::assertThat(modeIsKnown(), "mode == 1 || mode == 2");
        return arg_;
    }

protected:
    ~AttrInfo() = default;

    bool keyIsQuoted() const { return arg_.quotedKey.empty() == arg_.key.empty(); }

    bool modeIsKnown() const { return arg_.mode == textMode || arg_.mode == jsonMode; }

    AttrArg arg_;
    bool hasValue_ = false;

private:
    detail::QuotedKey keyText_;
};

/// A signed 32-bit integer.
class Attr32Info : public AttrInfo<AttrKind::integer32> {
public:
    using AttrInfo::AttrInfo;

    void setValue(std::int32_t value) {
        arg_.number = value;
        hasValue_ = true;
    }
};

/// A signed 64-bit integer, written as a JSON number with all its digits.
class Attr64Info : public AttrInfo<AttrKind::integer64> {
public:
    using AttrInfo::AttrInfo;

    void setValue(std::int64_t value) {
        arg_.number = value;
        hasValue_ = true;
    }
};

/// A boolean: true or false in JSON mode, the text "True" or "False" in text mode.
class BoolAttrInfo : public AttrInfo<AttrKind::boolean> {
public:
    using AttrInfo::AttrInfo;

    /// Asserts that the mode is 1 or 2, since the form of the value depends on it.
    void setValue(bool value) {
        Vex::assertThat(modeIsKnown(), "mode == 1 || mode == 2");
        if (arg_.mode == textMode) {
            arg_.text = value ? "True" : "False";
        } else {
            arg_.number = value ? 1 : 0;
        }
        hasValue_ = true;
    }
};

/// A string. Values of up to 99 bytes stay within the object; longer ones are allocated,
/// and freed when the value is replaced or the info destroyed.
class StringAttrInfo : public AttrInfo<AttrKind::string> {
public:
    static constexpr std::size_t bufferSize = 104;
    static constexpr std::size_t maxBufferedLength = 99;

    using AttrInfo::AttrInfo;

    /// Copies `value`, which can be any bytes, including those of the current value.
    void setValue(std::string_view value);

    /// Lets the value write its text, without an intermediate string.
    template <TextValue Value>
    void setValue(Value const & value) {
        static_assert(Value::maxTextLength <= bufferSize);
        char * const begin = buffer_ + 1;
        auto const length = static_cast<std::size_t>(value.writeTo(begin) - begin);
        keep({begin, length}, nullptr);
        if (textIsPlain<Value>()) {
            quote(length);
        } else {
            quoteIfPlain(length);
        }
    }

private:
    void keep(std::string_view text, std::unique_ptr<char[]> heap) {
        arg_.text = text;
        arg_.quotedText = {};
        arg_.isQuoted = false;
        hasValue_ = true;
        heap_ = std::move(heap);
    }

    /// Puts the quotes around a text of `length` bytes in the buffer.
    void quote(std::size_t length) {
        buffer_[0] = buffer_[length + 1] = '"';
        arg_.quotedText = {buffer_, length + 2};
        arg_.isQuoted = keyIsQuoted();
    }

    void quoteIfPlain(std::size_t length);

    static_assert(detail::QuotedKey::longest + 1 + bufferSize + 1 <= AttrArg::longestQuoted);

    char buffer_[1 + bufferSize + 1]; // with the quotes
    std::unique_ptr<char[]> heap_;
};

} // namespace outfmt
