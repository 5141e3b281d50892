#pragma once

#include "Vex/Errors.h"
#include "Vex/Types.h"

#include <string_view>

namespace [[gnu::visibility("default")]] Pelo {

/// A table cannot be created or opened, or is intact but of another kind: no such file,
/// no memory left, another format, another type of key or value.
class TableError : public Vex::Error {
public:
    /// Reads "table 'NAME': PROBLEM".
    TableError(std::string_view table, std::string_view problem);
    ~TableError() override;
};

/// The memory of a table is not what its writer stored there, or the writer died in the
/// middle of a change. What was read before is valid; nothing is known about the rest.
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

/// Raises `CorruptionDetectedException` for a file that is no longer as long as its table.
[[noreturn]] void throwFileSize(std::string_view table, Vex::U64 found, Vex::U64 expected);

/// Raises `CorruptionDetectedException` for a table that has no empty slot, so that the
/// search for an absent key would never end.
[[noreturn]] void throwNoEmptySlot(std::string_view table, Vex::U64 capacity);

/// Raises `CorruptionDetectedException` for a table whose number of live entries differs
/// from the one in its header.
[[noreturn]] void throwLiveCount(std::string_view table, Vex::U64 found, Vex::U64 expected);

} // namespace Pelo
