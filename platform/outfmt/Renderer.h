#pragma once

#include "outfmt/Format.h"
#include "outfmt/Interrupt.h"
#include "outfmt/OutputBuffer.h"
#include "outfmt/TextWriter.h"

#include <cstddef>
#include <type_traits>

namespace [[gnu::visibility("default")]] outfmt {

/// What mode() of a printer returns, by the kind of its output.
inline constexpr unsigned textMode = 1;
inline constexpr unsigned jsonMode = 2;

/// The text side of a printer, and the descriptor under both sides.
///
/// One function may serve both outputs: its text lines are dropped in JSON mode, its
/// structured calls in text mode. Every call asks for the user's interrupt first.
class Renderer {
public:
    Renderer(Renderer const &) = delete;
    Renderer & operator=(Renderer const &) = delete;

    /// 1 when the output is text, 2 when it is JSON.
    unsigned mode() const noexcept { return mode_; }

    /// Writes text, in text mode only. The format is printf's (see Format.h), a constant,
    /// and checked against its arguments while compiling:
    ///
    ///     printer.addFrills("%-17s %5d\n", name, count);
    ///
    /// Arguments are printed with all their bytes, '%' and NUL among them.
    ///
    /// Throws SigIntException on the user's interrupt, WriteError when the output cannot
    /// be written.
    template <class... Args>
    void addFrills(FormatString<std::type_identity_t<Args>...> const & format,
                   Args const &... args) {
        checkInterrupt();
        if (mode_ == textMode) {
            detail::putFormatted(buffer_, format.parsed(), args...);
        }
    }

    /// The same for a row that must not exceed `maxBytes`: what comes after them is cut
    /// off without a sign, the line end too if it is among it.
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

    /// Writes out everything that was printed so far. Has to be called when the output is
    /// complete, since the destructor drops what is left: it could not report a failure.
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
