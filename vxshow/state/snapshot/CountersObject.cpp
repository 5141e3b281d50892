#include "vxshow/state/snapshot/CountersObject.h"

#include "vxshow/state/snapshot/Field.h"

#include <array>
#include <string>

namespace vxshow::state::snapshot {

namespace {

/// A counter by its word in a snapshot.
struct Word {
    text::MemberName word;
    bool Counters::*kept;
};

constexpr std::array words{Word{"moves", &Counters::moves}, Word{"changes", &Counters::changes},
                           Word{"preference", &Counters::preference}};

Counters readMissing(text::JsonValue & value) {
    constexpr std::array expected{words[0].word, words[1].word, words[2].word};
    Counters counters;
    value.elements("a list of counters", [&](text::JsonValue & one) {
        auto const text = one.text(text::oneOf(expected));
        for (Word const & word : words) {
            if (text.text() == word.word.text()) {
                text::onlyNew(counters.*word.kept, text);
                counters.*word.kept = false;
                return;
            }
        }
        text.refuse(text::oneOf(expected));
    });
    return counters;
}

void writeMissing(ValuesWriter & values, std::string_view name, Counters const & counters) {
    values.list(name, [&] {
        for (Word const & word : words) {
            if (!(counters.*word.kept)) {
                values.element(word.word.text());
            }
        }
    });
}

constexpr auto uncountedObject = text::strictObject(
    "an object of the counters that sources do not keep",
    optionalMember(
        "received",
        [](text::JsonValue & value, KeptCounters & into) {
            value.members("an object whose members are sources", [&](text::JsonText const & key,
                                                                     text::JsonValue & member) {
                auto const [at, isNew] = into.received.try_emplace(std::string(key.text()));
                text::onlyNew(isNew, key);
                at->second = readMissing(member);
            });
        },
        [](ValuesWriter & values, std::string_view name, KeptCounters const & from) {
            if (from.received.empty()) {
                return;
            }
            values.object(name, [&] {
                for (auto const & entry : from.received) {
                    writeMissing(values, writable(entry.first), entry.second);
                }
            });
        }),
    optionalMember(
        "advertised",
        [](text::JsonValue & value, KeptCounters & into) { into.advertised = readMissing(value); },
        [](ValuesWriter & values, std::string_view name, KeptCounters const & from) {
            if (!from.advertised.areAllKept()) {
                writeMissing(values, name, from.advertised);
            }
        }));

} // namespace

KeptCounters readUncounted(text::JsonValue & value) {
    KeptCounters counters;
    uncountedObject.read(value, counters);
    std::erase_if(counters.received, [](auto const & entry) { return entry.second.areAllKept(); });
    return counters;
}

void writeUncounted(ValuesWriter & values, KeptCounters const & counters) {
    writeMembers(uncountedObject, values, counters);
}

} // namespace vxshow::state::snapshot
