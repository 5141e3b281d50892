#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints the received tables: the unicast section, then the flood section, each with title,
/// header, one row per binding, and a total over both directories. A null directory has no
/// rows. Raises what the printer raises.
void printText(outfmt::Printer & printer, bool dotted, Vex::Ptr<SwitchDir const> const & switches,
               Vex::Ptr<SwitchDir const> const & nonSwitchSources);

/// The parts of printText(). Each raises what the printer raises and adds the number of printed
/// rows to `counter`.

/// Prints the title, the rule and the header of a section.
void printHeader(outfmt::Printer & printer, char const * title, bool flood);

/// Prints the rows of every source: of `kind` "ucast", those of the unicast entries; of "bum",
/// those of multipath entries and flood lists. Another kind is a failed assertion. A null
/// directory has no rows.
void printTable(outfmt::Printer & printer, Vex::String const & kind, bool dotted,
                Vex::Ptr<SwitchDir const> const & sources, int & counter);

/// Prints one row per MAC of one VNI of one source.
void printUcastTable(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                     VniStatus const * status, int & counter);

/// Prints one row per VTEP, multipath entries first. A MAC in both tables is printed from both.
void printBumTable(outfmt::Printer & printer, Vex::Name const & source, Vex::String const & vni,
                   VniStatus const * status, int & counter);

} // namespace VxlanController::Cli
