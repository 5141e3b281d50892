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
/// The structured calls below write only in JSON mode. They throw SigIntException on the
/// user's interrupt and WriteError when the output cannot be written, in either mode. In
/// JSON mode a call that does not fit the open containers throws std::logic_error and
/// writes nothing; text mode does not track the structure.
///
/// A list left open: a caller can leave a list, and with it the dictionary whose member
/// it is, without ending either. If a keyed dictionary is started, or a dictionary ended,
/// while the innermost open container is a list, both are taken as finished and closed,
/// and the call goes on; this repeats while the innermost container is a list. A list of
/// the document itself cannot be left like this, since nothing would stay open.
class Printer : public Renderer {
public:
    /// Prints to `fd`, which the caller still owns. Format 1 is text; every other format
    /// is JSON: 3 with one member per line and two spaces per level, all others compact.
    ///
    /// The last four arguments are reserved and have no effect; callers pass (true,
    /// false, true, 0).
    Printer(int fd, unsigned format, bool reserved1, bool reserved2, bool reserved3,
            unsigned reserved4);

    /// Opens a document, which is one dictionary. No other document can be open.
    void start();

    /// Closes everything that is open and ends the document with a newline.
    void end();

    /// Opens a dictionary as a member of the open one. The key can be data: any bytes,
    /// even none. The caller ensures that keys do not repeat.
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
    /// info made for this printer, and `count` is their number. A wrong count, or another
    /// printer's mode, is a std::logic_error in both modes.
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
