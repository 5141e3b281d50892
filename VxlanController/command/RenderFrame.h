#pragma once

#include "Vex/Types.h"
#include "outfmt/Interrupt.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Reports on standard output, not on the command's descriptor, that the user has interrupted
/// the command: "exiting " and the text of the interrupt.
void announceInterrupt(outfmt::SigIntException const & interrupt);

/// The frame in which every command renders itself.
///
/// Creates the printer on `fd`, collects, and passes the printer to the text function if
/// `format` is 1, to the JSON function for every other value. An interrupt in either step ends
/// the command cleanly: nothing more is printed, one line on standard output reports it, and
/// the call returns. Every other exception is passed to the caller, including
/// `outfmt::WriteError` for an output that cannot be written.
template <class Collect, class Text, class Json>
void renderFrame(Vex::U32 fd, Vex::U32 format, Collect && collect, Text && text, Json && json) {
    constexpr Vex::U32 textFormat = 1;
    outfmt::Printer printer(static_cast<int>(fd), format, true, false, true, 0);
    try {
        collect();
        if (format == textFormat) {
            text(printer);
        } else {
            json(printer);
        }
        printer.flush();
    } catch (outfmt::SigIntException const & interrupt) {
        announceInterrupt(interrupt);
    }
}

} // namespace VxlanController::Cli
