#include "vxshow/sources/fabric/SourceTable.h"

#include "vxshow/sources/SystemId.h"
#include "vxshow/sources/fabric/Kinds.h"
#include "vxshow/text/ControlCharacters.h"
#include "vxshow/text/JsonMembers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace vxshow::sources::fabric {

namespace {

constexpr std::array<std::string_view, 6> commonKeys{"kind",       "name",      "role",
                                                     timeLimitKey, maxFactsKey, "system_id"};

bool contains(std::span<std::string_view const> keys, std::string_view name) {
    return std::find(keys.begin(), keys.end(), name) != keys.end();
}

/// `"a", "b" or "c"`.
std::string oneOfNames(std::vector<std::string_view> const & names) {
    return text::oneOf(std::vector<text::MemberName>(names.begin(), names.end()));
}

std::string acceptedKeys(Kind const & kind) {
    std::vector<std::string_view> keys(commonKeys.begin(), commonKeys.end());
    keys.insert(keys.end(), kind.keys.begin(), kind.keys.end());
    return oneOfNames(keys);
}

/// What to say of a key that only other kinds have; "" of one that none has.
std::string noteOnOtherKinds(std::string_view key) {
    std::vector<std::string_view> names;
    for (Kind const & kind : kinds()) {
        if (contains(kind.keys, key)) {
            names.push_back(kind.name);
        }
    }
    return names.empty() ? "" : ", which is only for kind " + oneOfNames(names);
}

void checkKeys(text::TomlField const & source, Kind const & kind) {
    for (text::TomlMember const & member : source.table("a table")) {
        if (!contains(commonKeys, member.name) && !contains(kind.keys, member.name)) {
            source.refuseKey(member, noteOnOtherKinds(member.name), acceptedKeys(kind));
        }
    }
}

std::string readName(text::TomlField const & field) {
    constexpr std::size_t longest = 256;
    constexpr auto expected = "a name of 1 to 256 bytes without control characters";
    auto const & name = field.text(expected);
    if (name.empty() || name.size() > longest || text::hasControls(name)) {
        field.refuse(expected);
    }
    return name;
}

Role readRole(text::TomlField const & field) {
    auto const & words = state::roleWords;
    auto const expected = oneOfNames({words.begin(), words.end()});
    auto const * const found = std::find(words.begin(), words.end(), field.text(expected));
    if (found == words.end()) {
        field.refuse(expected);
    }
    return static_cast<Role>(found - words.begin());
}

/// The kind is read first: which keys are known depends on it.
Kind const & readKind(text::TomlField const & field) {
    std::vector<std::string_view> names;
    for (Kind const & kind : kinds()) {
        names.push_back(kind.name);
    }
    auto const expected = oneOfNames(names);
    auto const found = std::find(names.begin(), names.end(), field.text(expected));
    if (found == names.end()) {
        field.refuse(expected);
    }
    return kinds()[static_cast<std::size_t>(found - names.begin())];
}

} // namespace

std::chrono::milliseconds readTimeLimit(text::TomlField const & field) {
    constexpr double longest = 3600;
    constexpr auto expected = "seconds: a number greater than 0 and at most 3600";
    double const seconds = field.number(expected);
    // Written so that NaN fails it.
    if (!(seconds > 0 && seconds <= longest)) {
        field.refuse(expected);
    }
    return std::max(std::chrono::milliseconds(std::llround(seconds * 1000)),
                    std::chrono::milliseconds(1));
}

std::optional<std::size_t> readMaxFacts(text::TomlField const & table) {
    constexpr std::int64_t most = std::numeric_limits<std::uint32_t>::max();
    auto const field = table.find(maxFactsKey);
    if (!field) {
        return std::nullopt;
    }
    auto const expected = "a whole number from 1 to " + std::to_string(most);
    auto const number = field->integer(expected);
    if (number < 1 || number > most) {
        field->refuse(expected);
    }
    return static_cast<std::size_t>(number);
}

Source readSourceTable(text::TomlField const & source, std::string const & folder,
                       std::size_t maxFacts) {
    source.table("a table");
    auto const & kind = readKind(source.required("kind"));
    checkKeys(source, kind);
    Source result;
    result.name = readName(source.required("name"));
    if (auto const field = source.find("role")) {
        result.role = readRole(*field);
    }
    if (auto const field = source.find(timeLimitKey)) {
        result.timeLimit = readTimeLimit(*field);
    }
    result.maxFacts = readMaxFacts(source).value_or(maxFacts);
    if (auto const field = source.find("system_id")) {
        result.systemId = readSystemId(*field);
    }
    result.access = kind.readAccess(source, folder);
    result.kind = kind.name;
    return result;
}

} // namespace vxshow::sources::fabric
