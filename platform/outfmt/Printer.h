#pragma once

#include "outfmt/AttrArg.h"
#include "outfmt/JsonWriter.h"
#include "outfmt/Renderer.h"

#include <array>
#include <concepts>
#include <span>
#include <string_view>

namespace [[gnu::visibility("default")]] outfmt {

/// The printer of the show commands: a text listing or a JSON document on a descriptor.
///
/// The structured calls below write in JSON mode only. They throw SigIntException on the
/// user's interrupt and WriteError when the output cannot be written, in either mode. In
/// JSON mode a call that does not fit what is open throws std::logic_error and writes
/// nothing; the text mode does not follow the structure.
///
/// A list left open: a caller may leave a list, and with it the dictionary whose member
/// it is, without ending either. When a keyed dictionary is started, or a dictionary
/// ended, while the innermost open container is a list, both are taken as finished and
/// closed, and the call goes on; again, should a list be innermost then. A list of the
/// document itself cannot be left like this, since nothing would be open any more.
class Printer : public Renderer {
public:
    /// Prints on `fd`, which stays the caller's. Format 1 is text; every other is JSON, 3
    /// with one member a line and two blanks a level, the rest compact.
    ///
    /// The last four arguments are reserved: callers pass (true, false, true, 0), and
    /// nothing depends on them.
    Printer(int fd, unsigned format, bool reserved1, bool reserved2, bool reserved3,
            unsigned reserved4);

    /// Opens a document, which is one dictionary. No other may be open.
    void start();

    /// Closes whatever is open and ends the document with a newline.
    void end();

    /// Opens a dictionary as a member of the open one. The key may be data: any bytes, the
    /// empty text too. That keys do not repeat is the caller's business.
    void startDict(std::string_view key);

    /// Closes a dictionary of startDict().
    void endDict();

    /// Opens a list as a member of the open dictionary or list entry.
    void startList(std::string_view key);

    /// Closes the innermost container, which is a list.
    void endList();

    /// Opens a dictionary as an element of the open list.
    void startListEntry();

    /// Closes the innermost container, which is a list entry.
    void endListEntry();

    /// Adds attributes, in the order given: members of the open dictionary or list entry,
    /// or, without keys, elements of the open list. Each is the getArg() of an attribute
    /// info made for this printer; `count` is how many there are, and another count, or
    /// another printer's mode, is a std::logic_error in both modes.
    template <std::same_as<AttrArg>... Args>
    void addAttributesJson(unsigned count, Args const &... args) {
        if (count != sizeof...(Args)) [[unlikely]] {
            refuse("the count differs from the arguments");
        }
        if (((args.mode != mode()) || ...)) [[unlikely]] {
            refuse("the attribute was made for another mode");
        }
        addAttributes(std::array<AttrArg const *, sizeof...(Args)>{&args...});
    }

private:
    bool printsJson() const;
    [[noreturn]] static void refuse(char const * reason);
    void addAttributes(std::span<AttrArg const * const> attributes);

    JsonWriter json_;
};

} // namespace outfmt
