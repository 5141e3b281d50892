#pragma once

#include "Vex/Errors.h"
#include "Vex/Types.h"

#include <string_view>

namespace [[gnu::visibility("default")]] Pelo {

/// A table that cannot be made or opened, or that is sound but of another kind: no such
/// file, no memory left, another format, another type of key or value.
class TableError : public Vex::Error {
public:
    /// Reads "table 'NAME': PROBLEM".
    TableError(std::string_view table, std::string_view problem);
    ~TableError() override;
};

/// A table whose memory does not hold what its writer put there, or whose writer died in
/// the middle of a change. What was read before it is good; nothing behind it can be told.
class CorruptionDetectedException : public Vex::Error {
public:
    /// Reads "table 'NAME', PLACE: FOUND, expected EXPECTED".
    CorruptionDetectedException(std::string_view table, std::string_view place,
                                std::string_view found, std::string_view expected);
    ~CorruptionDetectedException() override;
};

/// Raises `CorruptionDetectedException` for a slot whose checksum is wrong.
[[noreturn]] void throwSlotChecksum(std::string_view table, Vex::U64 slot, Vex::U64 found,
                                    Vex::U64 expected);

/// Raises `CorruptionDetectedException` for a slot in a state that does not exist.
[[noreturn]] void throwSlotState(std::string_view table, Vex::U64 slot, unsigned found);

/// Raises `CorruptionDetectedException` for a table that has no empty slot, so that the
/// search for a key that is absent has no end.
[[noreturn]] void throwNoEmptySlot(std::string_view table, Vex::U64 capacity);

/// Raises `CorruptionDetectedException` for a table whose slots hold another number of
/// live entries than its header says.
[[noreturn]] void throwLiveCount(std::string_view table, Vex::U64 found, Vex::U64 expected);

} // namespace Pelo
