#include "vxshow/state/snapshot/Snapshot.h"

#include "Vex/Errors.h"
#include "vxshow/state/snapshot/Document.h"
#include "vxshow/text/JsonRefusal.h"

#include <new>
#include <system_error>
#include <unistd.h>

namespace vxshow::state::snapshot {

namespace {

Mount readBytes(system::FileBytes const & bytes, std::string const & name,
                Selection const & selection) {
    try {
        text::JsonReader json(bytes);
        return readDocument(json, selection);
    } catch (text::Refusal const & refusal) {
        throw SnapshotError(name + ":" + text::refusalLine(refusal, bytes.text()));
    } catch (text::MalformedJson const & malformed) {
        throw SnapshotError(name + ":" + text::refusalLine(malformed, bytes.text()));
    }
}

} // namespace

Mount readSnapshot(std::string const & path, Selection const & selection, std::size_t maxSize) {
    bool const standardInput = path == "-";
    auto const name = standardInput ? "standard input" : Vex::printable(path);
    try {
        return readBytes(standardInput ? system::FileBytes::read(STDIN_FILENO, maxSize)
                                       : system::FileBytes::open(path, maxSize),
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

} // namespace vxshow::state::snapshot
