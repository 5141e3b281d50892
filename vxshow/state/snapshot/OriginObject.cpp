#include "vxshow/state/snapshot/OriginObject.h"

#include "vxshow/state/snapshot/Field.h"
#include "vxshow/text/ControlCharacters.h"

#include <algorithm>
#include <array>
#include <string>

namespace vxshow::state::snapshot {

namespace {

constexpr std::string_view aTime = "a time in UTC such as 2026-11-23T02:10:11.125Z";
constexpr std::string_view aLine = "a text without control characters";

system::UtcTime readTime(text::JsonValue & value) {
    auto const text = value.text(aTime);
    auto const time = system::UtcTime::tryFromString(text.text());
    if (!time) {
        text.refuse(std::string(aTime));
    }
    return *time;
}

std::string readLine(text::JsonValue & value) {
    auto const text = value.text(aLine);
    if (text::hasControls(text.text())) {
        text.refuse(std::string(aLine));
    }
    return std::string(text.text());
}

/// A line of text, left out if it is empty.
template <class Owner>
constexpr auto optionalLine(text::MemberName name, std::string Owner::*line) {
    return optionalMember(
        name, [line](text::JsonValue & value, Owner & into) { into.*line = readLine(value); },
        [line](ValuesWriter & values, std::string_view written, Owner const & from) {
            if (!(from.*line).empty()) {
                values.text(written, from.*line);
            }
        });
}

template <class Owner>
constexpr auto requiredLine(text::MemberName name, std::string Owner::*line) {
    return requiredMember(
        name, [line](text::JsonValue & value, Owner & into) { into.*line = readLine(value); },
        [line](ValuesWriter & values, std::string_view written, Owner const & from) {
            values.text(written, from.*line);
        });
}

void readRole(text::JsonValue & value, SourceOrigin & into) {
    std::array<text::MemberName, roleWords.size()> const words{
        text::MemberName(roleWords[0]), text::MemberName(roleWords[1]),
        text::MemberName(roleWords[2]), text::MemberName(roleWords[3])};
    auto const expected = text::oneOf(words);
    auto const text = value.text(expected);
    auto const found = std::find(roleWords.begin(), roleWords.end(), text.text());
    if (found == roleWords.end()) {
        text.refuse(expected);
    }
    into.role = static_cast<Role>(found - roleWords.begin());
}

constexpr auto countsObject =
    text::strictObject("an object of counts", optionalNumber("switches", &SourceCounts::switches),
                       optionalNumber("vnis", &SourceCounts::vnis),
                       optionalNumber("localMacs", &SourceCounts::localMacs),
                       optionalNumber("remoteMacs", &SourceCounts::remoteMacs),
                       optionalNumber("floods", &SourceCounts::floods),
                       optionalNumber("localBindings", &SourceCounts::localBindings),
                       optionalNumber("remoteBindings", &SourceCounts::remoteBindings),
                       optionalNumber("routers", &SourceCounts::routers),
                       optionalNumber("routes", &SourceCounts::routes),
                       optionalNumber("leftOut", &SourceCounts::leftOut),
                       optionalNumber("ipv6Vteps", &SourceCounts::ipv6Vteps),
                       optionalNumber("unplaced", &SourceCounts::unplaced),
                       optionalNumber("disputed", &SourceCounts::disputed));

constexpr auto sourceObject = text::strictObject(
    "an object of a source's origin", requiredLine("name", &SourceOrigin::name),
    requiredLine("kind", &SourceOrigin::kind),
    requiredMember("role", readRole,
                   [](ValuesWriter & values, std::string_view name, SourceOrigin const & from) {
                       values.text(name, roleWords[static_cast<std::size_t>(from.role)]);
                   }),
    optionalMember(
        "read", [](text::JsonValue & value, SourceOrigin & into) { into.read = readTime(value); },
        [](ValuesWriter & values, std::string_view name, SourceOrigin const & from) {
            if (from.read) {
                values.text(name, from.read->stringValue());
            }
        }),
    optionalLine("failure", &SourceOrigin::failure),
    optionalLine("remarks", &SourceOrigin::remarks),
    optionalMember(
        "counts",
        [](text::JsonValue & value, SourceOrigin & into) { countsObject.read(value, into.counts); },
        [](ValuesWriter & values, std::string_view name, SourceOrigin const & from) {
            if (from.read) {
                values.object(name, [&] { writeMembers(countsObject, values, from.counts); });
            }
        }));

constexpr auto originObject = text::strictObject(
    "an object of the state's origin",
    requiredMember(
        "made", [](text::JsonValue & value, Origin & into) { into.made = readTime(value); },
        [](ValuesWriter & values, std::string_view name, Origin const & from) {
            values.text(name, from.made.stringValue());
        }),
    requiredLine("version", &Origin::version),
    optionalMember(
        "sources",
        [](text::JsonValue & value, Origin & into) {
            value.elements("a list of sources", [&](text::JsonValue & one) {
                sourceObject.read(one, into.sources.emplace_back());
            });
        },
        [](ValuesWriter & values, std::string_view name, Origin const & from) {
            values.list(name, [&] {
                for (SourceOrigin const & source : from.sources) {
                    values.objectElement([&] { writeMembers(sourceObject, values, source); });
                }
            });
        }));

} // namespace

Origin readOrigin(text::JsonValue & value) {
    Origin origin{system::UtcTime({}), {}};
    originObject.read(value, origin);
    return origin;
}

void writeOrigin(ValuesWriter & values, Origin const & origin) {
    writeMembers(originObject, values, origin);
}

} // namespace vxshow::state::snapshot
