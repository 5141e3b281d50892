#include "vxshow/cli/command/EntryNames.h"

#include "Vxlan/Vni.h"

#include <cstdlib>

namespace vxshow::cli::command {

namespace {

/// Why a command does not accept `name` as a VNI; null if it does.
char const * whyNot(Vex::Name const & name, NoNumber noNumber) {
    // As the commands read it: blanks and a sign can precede the number, anything can follow it.
    char const * const text = name.stringValue().c_str();
    char * end = nullptr;
    long const number = std::strtol(text, &end, 10);
    if (end == text && noNumber == NoNumber::isAnError) {
        return "found no number, expected a VNI in decimal";
    }
    bool const isVni = number >= 0 && number <= long{Vxlan::Vni::max};
    return isVni ? nullptr : "expected a VNI from 0 to 16777215";
}

} // namespace

std::optional<std::string> firstInvalidEntryName(Vex::Dir const & entries, NoNumber noNumber) {
    std::optional<Vex::Name> first;
    for (auto entry = entries.entityPtrIteratorConst(); entry; ++entry) {
        if (whyNot(entry.name(), noNumber) && (!first || entry.name() < *first)) {
            first = entry.name();
        }
    }
    if (!first) {
        return std::nullopt;
    }
    return "entry " + Vex::quoted(first->stringValue()) + ": " + whyNot(*first, noNumber);
}

} // namespace vxshow::cli::command
