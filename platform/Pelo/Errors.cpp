#include "Pelo/Errors.h"

#include "Pelo/Text.h"

#include <string>

namespace [[gnu::visibility("default")]] Pelo {

namespace {

std::string slotText(Vex::U64 slot) {
    return "slot " + std::to_string(slot);
}

} // namespace

TableError::TableError(std::string_view table, std::string_view problem)
    : Error(std::string("table ").append(Vex::quoted(table)).append(": ").append(problem)) {}

TableError::~TableError() = default;

CorruptionDetectedException::CorruptionDetectedException(std::string_view table,
                                                         std::string_view place,
                                                         std::string_view found,
                                                         std::string_view expected)
    : Error(std::string("table ")
                .append(Vex::quoted(table))
                .append(", ")
                .append(place)
                .append(": ")
                .append(found)
                .append(", expected ")
                .append(expected)) {}

CorruptionDetectedException::~CorruptionDetectedException() = default;

void throwSlotChecksum(std::string_view table, Vex::U64 slot, Vex::U64 found, Vex::U64 expected) {
    throw CorruptionDetectedException(table, slotText(slot), "checksum " + hexText(found),
                                      hexText(expected));
}

void throwSlotState(std::string_view table, Vex::U64 slot, unsigned found) {
    throw CorruptionDetectedException(table, slotText(slot), "state " + std::to_string(found),
                                      "0 (empty), 1 (live) or 2 (dead)");
}

void throwFileSize(std::string_view table, Vex::U64 found, Vex::U64 expected) {
    throw CorruptionDetectedException(table, "file", std::to_string(found) + " bytes",
                                      std::to_string(expected));
}

void throwNoEmptySlot(std::string_view table, Vex::U64 capacity) {
    throw CorruptionDetectedException(
        table, "slots", "none of " + std::to_string(capacity) + " empty", "a third of them");
}

void throwLiveCount(std::string_view table, Vex::U64 found, Vex::U64 expected) {
    throw CorruptionDetectedException(table, "slots", std::to_string(found) + " live entries",
                                      std::to_string(expected));
}

} // namespace Pelo
