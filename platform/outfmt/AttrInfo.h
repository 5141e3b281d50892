#pragma once

#include "Vex/Assert.h"
#include "outfmt/AttrArg.h"
#include "outfmt/Renderer.h"
#include "outfmt/TextValue.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

/// The attributes of the JSON output. An info is made once before a loop and only its
/// value is set for each entry, so that a listing of millions of entries allocates
/// nothing for them.
namespace [[gnu::visibility("default")]] outfmt {

/// What all attribute infos have: the mode of the printer they are made for, a key, a
/// kind, and a value once one was set.
template <AttrKind kind>
class AttrInfo {
public:
    /// For use with `printer`. The key is not copied and must outlive the info, as a
    /// literal does; an empty one makes a bare list element.
    AttrInfo(Renderer const & printer, std::string_view key) : AttrInfo(printer.mode(), key) {}

    /// The same for a printer known by its mode(), 1 or 2.
    AttrInfo(unsigned mode, std::string_view key) : arg_{.key = key, .kind = kind, .mode = mode} {}

    AttrInfo(AttrInfo const &) = delete;
    AttrInfo & operator=(AttrInfo const &) = delete;

    /// The argument for addAttributesJson(), which refers to this info and is valid until
    /// the next setValue(). Asserts that a value was set and that the mode is 1 or 2.
    AttrArg getArg() const {
        Vex::assertThat(hasValue_, "hasValue");
        Vex::assertThat(modeIsKnown(), "mode == 1 || mode == 2");
        return arg_;
    }

protected:
    ~AttrInfo() = default;

    bool modeIsKnown() const { return arg_.mode == textMode || arg_.mode == jsonMode; }

    AttrArg arg_;
    bool hasValue_ = false;
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

    /// Asserts that the mode is 1 or 2, on which the form of the value depends.
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

/// A string. Values of up to 99 bytes stay within the object; longer ones go to the heap,
/// and are freed when the value is replaced or the info destroyed.
class StringAttrInfo : public AttrInfo<AttrKind::string> {
public:
    static constexpr std::size_t bufferSize = 104;
    static constexpr std::size_t maxBufferedLength = 99;

    using AttrInfo::AttrInfo;

    /// Copies `value`, which may be any bytes, also those of the present value.
    void setValue(std::string_view value);

    /// Has the value write its text, without a string in between.
    template <TextValue Value>
    void setValue(Value const & value) {
        static_assert(Value::maxTextLength <= bufferSize);
        char * end = value.writeTo(buffer_);
        keep({buffer_, static_cast<std::size_t>(end - buffer_)}, nullptr);
    }

private:
    void keep(std::string_view text, std::unique_ptr<char[]> heap) {
        arg_.text = text;
        hasValue_ = true;
        heap_ = std::move(heap);
    }

    char buffer_[bufferSize];
    std::unique_ptr<char[]> heap_;
};

} // namespace outfmt
