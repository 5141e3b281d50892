#pragma once

#include "Vex/Errors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

/// Checks of what all value types guarantee.
namespace valuechecks {

/// The text that `write(out)` writes. Checks that the bytes before and after its room are
/// unchanged.
template <class Write>
std::string written(std::size_t room, Write write) {
    std::string buffer(room + 16, '#');
    char * const out = buffer.data() + 1;
    char * const end = write(out);
    EXPECT_LE(static_cast<std::size_t>(end - out), room);
    EXPECT_EQ(buffer.front(), '#');
    EXPECT_EQ(buffer.substr(room + 1), std::string(15, '#'));
    return {out, end};
}

/// Expects that every writer of `value` writes `text`, and that `value` is read back from
/// it.
template <class Value>
void expectText(Value const & value, std::string_view text) {
    EXPECT_EQ(value.stringValue(), text);
    EXPECT_EQ(written(Value::maxTextLength, [&](char * out) { return value.writeTo(out); }), text);
    EXPECT_TRUE(Value::tryFromString(text) == value) << text;
    EXPECT_TRUE(Value::fromString(text) == value) << text;
}

/// Expects that both readers refuse each text, with a message that starts with the text.
template <class Value, class Error = Vex::ParseError>
void expectRefused(std::vector<std::string_view> const & texts) {
    for (auto const text : texts) {
        EXPECT_FALSE(Value::tryFromString(text).has_value()) << Vex::quoted(text);
        try {
            Value::fromString(text);
            ADD_FAILURE() << "accepted: " << Vex::quoted(text);
        } catch (Error const & error) {
            auto const start = Vex::quoted(text) + ": expected ";
            EXPECT_EQ(std::string_view(error.what()).substr(0, start.size()), start);
        }
    }
}

/// Expects that the values are in ascending order: every pair compares as their positions
/// do.
template <class Value>
void expectAscending(std::vector<Value> const & values) {
    for (std::size_t left = 0; left < values.size(); ++left) {
        for (std::size_t right = 0; right < values.size(); ++right) {
            SCOPED_TRACE(values[left].stringValue() + " and " + values[right].stringValue());
            EXPECT_TRUE((values[left] <=> values[right]) == (left <=> right));
            EXPECT_EQ(values[left] == values[right], left == right);
        }
    }
}

/// Expects that equal values have equal hashes, and that these distinct values fill a
/// table that takes its slot from the top 16 bits about as well as random numbers would:
/// with as many values as slots, those leave 1/e of the slots empty.
template <class Value>
void expectSpreadHashes(std::vector<Value> const & values) {
    ASSERT_EQ(values.size(), 65536U);
    std::unordered_set<std::size_t> hashes;
    std::unordered_set<std::size_t> topSlots;
    for (auto const & value : values) {
        Value const copy = value;
        EXPECT_EQ(std::hash<Value>()(copy), std::hash<Value>()(value));
        hashes.insert(std::hash<Value>()(value));
        topSlots.insert(std::hash<Value>()(value) >> 48);
    }
    EXPECT_EQ(hashes.size(), values.size());
    EXPECT_GT(topSlots.size(), 40000U);
}

/// The 65536 results of `make` for 0 to 65535.
template <class Make>
auto manyValues(Make make) {
    std::vector<decltype(make(0U))> values;
    for (unsigned number = 0; number < 65536; ++number) {
        values.push_back(make(number));
    }
    return values;
}

} // namespace valuechecks
