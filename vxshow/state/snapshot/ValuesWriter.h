#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Vex/Errors.h"
#include "outfmt/AttrInfo.h"
#include "outfmt/Interrupt.h"
#include "outfmt/Printer.h"
#include "outfmt/TextValue.h"

#include <algorithm>
#include <cstddef>
#include <forward_list>
#include <string_view>
#include <vector>

/// Writes the values that a snapshot consists of.
namespace vxshow::state::snapshot {

/// The state contains something that a snapshot cannot express. The message is one line of
/// printable ASCII.
class Unwritable : public Vex::Error {
public:
    using Vex::Error::Error;
};

/// `text` itself if it is UTF-8, as JSON must be. Throws `Unwritable` otherwise: a changed text
/// would be read back as a different name.
std::string_view writable(std::string_view text);

/// Throws `Unwritable` for the empty value.
template <outfmt::TextValue Value>
void requireAddress(Value const & value) {
    if constexpr (requires { value.isNone(); }) {
        if (value.isNone()) {
            throw Unwritable("an entry has no address; a snapshot needs one");
        }
    }
}

/// The text of an address or a number, as long as this lives. Throws `Unwritable` for the empty
/// value.
template <outfmt::TextValue Value>
class Spelled {
public:
    explicit Spelled(Value const & value) {
        requireAddress(value);
        length_ = static_cast<std::size_t>(value.writeTo(text_) - text_);
    }

    operator std::string_view() const noexcept { return {text_, length_}; }

private:
    char text_[Value::maxTextLength];
    std::size_t length_;
};

/// The attribute infos of the members written so far: a state has millions of members, but few
/// names, and to prepare a name takes longer than to write a member.
template <class Info>
class MemberInfos {
public:
    explicit MemberInfos(outfmt::Printer const & printer) : printer_(printer) {}

    /// The info for the member `name`, a constant that outlives this.
    Info & of(std::string_view name) {
        for (auto & known : infos_) {
            if (known.name.data() == name.data() && known.name.size() == name.size()) {
                return known.info;
            }
        }
        return infos_.emplace_front(printer_, name).info;
    }

private:
    struct Known {
        std::string_view name;
        Info info;

        Known(outfmt::Printer const & printer, std::string_view written)
            : name(written), info(printer, written) {}
    };

    outfmt::Printer const & printer_;
    std::forward_list<Known> infos_;
};

/// Writes members to a printer. The caller is responsible for the keys; values are checked.
class ValuesWriter {
public:
    explicit ValuesWriter(outfmt::Printer & printer)
        : printer_(printer), element_(printer, ""), addresses_(printer), numbers_(printer) {}

    outfmt::Printer & printer() const noexcept { return printer_; }

    /// Writes the member `key`: an object of the members that `fill()` writes.
    template <class Fill>
    void object(std::string_view key, Fill && fill) {
        printer_.startDict(key);
        fill();
        printer_.endDict();
    }

    /// Writes the member `key`: a list of the elements that `fill()` writes.
    template <class Fill>
    void list(std::string_view key, Fill && fill) {
        printer_.startList(key);
        fill();
        printer_.endList();
    }

    /// Writes the member `name`, a constant that outlives this: an address. Throws `Unwritable` for
    /// the empty one.
    template <outfmt::TextValue Address>
    void address(std::string_view name, Address const & address) {
        requireAddress(address);
        auto & info = addresses_.of(name);
        info.setValue(address);
        printer_.addAttributesJson(1, info.getArg());
    }

    /// Writes the member `key`: a list of the addresses in the range, in ascending order.
    template <class Range>
    void addresses(std::string_view key, Range const & range) {
        using Address = std::remove_cvref_t<decltype(*range.begin())>;
        std::vector<Address> sorted;
        sorted.reserve(range.size());
        for (Address const & address : range) {
            sorted.push_back(address);
        }
        std::sort(sorted.begin(), sorted.end());
        list(key, [&] {
            for (Address const & address : sorted) {
                requireAddress(address);
                element_.setValue(address);
                printer_.addAttributesJson(1, element_.getArg());
            }
        });
    }

    /// Writes an element of the open list: an object of the members that `fill()` writes.
    template <class Fill>
    void objectElement(Fill && fill) {
        printer_.startListEntry();
        fill();
        printer_.endListEntry();
    }

    /// Writes an element of the open list.
    void element(std::string_view text);

    void text(std::string_view key, std::string_view text);

    /// Writes the member `name`, a constant that outlives this.
    void number(std::string_view name, Vex::U32 number);

    void boolean(std::string_view key, bool value);

private:
    outfmt::Printer & printer_;
    outfmt::StringAttrInfo element_;
    MemberInfos<outfmt::StringAttrInfo> addresses_;
    MemberInfos<outfmt::Attr64Info> numbers_;
};

} // namespace vxshow::state::snapshot
