#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints the advertised tables: the unicast section with one row per MAC, then the flood
/// section with one entry per MAC, its VTEPs three per line. Each section has title, header and
/// total, even for a null or empty list. Raises what the printer raises.
void printFdbText(outfmt::Printer & printer, bool dotted,
                  Vex::Ptr<VniStatusList const> const & vnis);

/// The parts of printFdbText(). Each raises what the printer raises.

/// Prints the title, the rule and the header of a section.
void printFdbHeader(outfmt::Printer & printer, char const * title, bool flood);

/// Prints the rows of every VNI and their total: of `kind` "ucast", those of the unicast
/// entries; of "bum", those of multipath entries and flood lists. Another kind is a failed
/// assertion. A null list has the total 0.
void printFdbTable(outfmt::Printer & printer, Vex::String const & kind, bool dotted,
                   Vex::Ptr<VniStatusList const> const & vnis);

/// Prints one row per MAC of one VNI and adds their number to `counter`.
void printFdbUcastTable(outfmt::Printer & printer, Vex::String const & vni,
                        VniStatus const * status, int & counter);

/// Prints one entry per MAC and adds their number to `counter`. Multipath entries are first; a
/// MAC that has one is not printed again from the flood lists, unlike in the received table.
void printFdbBumTable(outfmt::Printer & printer, Vex::String const & vni, VniStatus const * status,
                      int & counter);

} // namespace VxlanController::Cli
