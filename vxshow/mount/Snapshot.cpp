#include "vxshow/mount/Snapshot.h"

#include "Vex/Errors.h"
#include "vxshow/mount/DocumentReader.h"
#include "vxshow/mount/Place.h"
#include "vxshow/mount/Shown.h"

#include <new>
#include <system_error>
#include <unistd.h>

namespace vxshow {

namespace {

std::string line(Place const & place, std::string const & found, std::string const & expected) {
    auto line = std::to_string(place.line) + ":" + std::to_string(place.column) + ": ";
    if (!place.members.empty()) {
        line.append(place.members).append(": ");
    }
    return line.append("found ").append(found).append(", expected ").append(expected);
}

std::string lineOf(Refusal const & refusal, std::string_view document) {
    auto const position = static_cast<std::size_t>(refusal.at - document.data());
    auto const found = shownToken(document, position).append(refusal.about);
    return line(placeOf(document, position), found, refusal.expected);
}

std::string lineOf(MalformedJson const & malformed, std::string_view document) {
    if (auto const error = firstSyntaxError(document)) {
        return line(placeOf(document, error->position), error->found, error->expected);
    }
    return std::string(" ").append(simdjson::error_message(malformed.error));
}

Mount readBytes(FileBytes const & bytes, std::string const & name, Selection const & selection) {
    try {
        JsonReader json(bytes);
        return readDocument(json, selection);
    } catch (Refusal const & refusal) {
        throw SnapshotError(name + ":" + lineOf(refusal, bytes.text()));
    } catch (MalformedJson const & malformed) {
        throw SnapshotError(name + ":" + lineOf(malformed, bytes.text()));
    }
}

} // namespace

Mount readSnapshot(std::string const & path, Selection const & selection) {
    bool const standardInput = path == "-";
    auto const name = standardInput ? "standard input" : Vex::printable(path);
    try {
        return readBytes(standardInput ? FileBytes::read(STDIN_FILENO) : FileBytes::open(path),
                         name, selection);
    } catch (std::system_error const & error) {
        throw SnapshotError(name + ": " + error.code().message());
    } catch (std::length_error const & error) {
        throw SnapshotError(name + ": " + error.what());
    } catch (std::bad_alloc const &) {
        throw SnapshotError(name + ": not enough memory for it");
    } catch (Vex::Error const & error) {
        throw SnapshotError(name + ": " + error.what());
    }
}

} // namespace vxshow
