#include "vxshow/cli/command/EntryNames.h"

#include <cstdlib>

namespace vxshow::cli::command {

namespace {

/// The number that a name begins with, 0 if it has none; and whether it has one.
struct NumberOfName {
    long value;
    bool isThere;
};

NumberOfName numberOf(std::string const & name) {
    char * end = nullptr;
    long const value = std::strtol(name.c_str(), &end, 10);
    return {value, end != name.c_str()};
}

bool isVni(long number) {
    return number >= 0 && number <= long{Vxlan::Vni::max};
}

/// Why a command does not accept `name` as a VNI; null if it does.
char const * whyNot(Vex::Name const & name, NoNumber noNumber) {
    auto const number = numberOf(name.stringValue());
    if (!number.isThere && noNumber == NoNumber::isAnError) {
        return "found no number, expected a VNI in decimal";
    }
    return isVni(number.value) ? nullptr : "expected a VNI from 0 to 16777215";
}

} // namespace

std::optional<Vxlan::Vni> vniOfEntryName(std::string const & name, NoNumber noNumber) {
    auto const number = numberOf(name);
    if ((!number.isThere && noNumber == NoNumber::isAnError) || !isVni(number.value)) {
        return std::nullopt;
    }
    return Vxlan::Vni(static_cast<Vex::U32>(number.value));
}

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
