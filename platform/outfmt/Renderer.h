#pragma once

#include "outfmt/Format.h"
#include "outfmt/Interrupt.h"
#include "outfmt/OutputBuffer.h"
#include "outfmt/TextWriter.h"

#include <cstddef>
#include <type_traits>

namespace [[gnu::visibility("default")]] outfmt {

/// The values of a printer's mode().
inline constexpr unsigned textMode = 1;
inline constexpr unsigned jsonMode = 2;

/// The text side of a printer, and the descriptor of both sides.
///
/// One function can serve both outputs: its text lines are dropped in JSON mode, its
/// structured calls in text mode. Every call checks for the user's interrupt first.
class Renderer {
public:
    Renderer(Renderer const &) = delete;
    Renderer & operator=(Renderer const &) = delete;

    /// 1 when the output is text, 2 when it is JSON.
    unsigned mode() const noexcept { return mode_; }

    /// Writes text, in text mode only. The format is a constant printf format (see
    /// Format.h), checked against its arguments at compile time:
    ///
    ///     printer.addFrills("%-17s %5d\n", name, count);
    ///
    /// Arguments are printed with all their bytes, including '%' and NUL.
    ///
    /// Throws SigIntException on the user's interrupt, WriteError if the output cannot be
    /// written.
    template <class... Args>
    void addFrills(FormatString<std::type_identity_t<Args>...> const & format,
                   Args const &... args) {
        checkInterrupt();
        if (mode_ == textMode) {
            detail::putFormatted(buffer_, format.parsed(), args...);
        }
    }

    /// The same for a row of at most `maxBytes`: everything after that is silently cut
    /// off, even the line end.
    template <class... Args>
    void addFrillsUpTo(std::size_t maxBytes,
                       FormatString<std::type_identity_t<Args>...> const & format,
                       Args const &... args) {
        checkInterrupt();
        if (mode_ == textMode) {
            LimitedOutput output(buffer_, maxBytes);
            detail::putFormatted(output, format.parsed(), args...);
        }
    }

    /// Writes out everything printed so far. Must be called when the output is complete,
    /// since the destructor, which could not report a failure, drops what is left.
    ///
    /// Throws like addFrills().
    void flush();

protected:
    Renderer(int fd, unsigned format);
    ~Renderer() = default;

    OutputBuffer & buffer() { return buffer_; }

private:
    unsigned mode_;
    OutputBuffer buffer_;
};

} // namespace outfmt
