#pragma once

#include "Vex/Errors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

/// What every value type promises alike, checked in one way for all of them.
namespace valuechecks {

/// What `write(out)` writes, with a watch on the byte before its room and those after.
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

/// The value has that text, whichever way it is asked for, and is read back from it.
template <class Value>
void expectText(Value const & value, std::string_view text) {
    EXPECT_EQ(value.stringValue(), text);
    EXPECT_EQ(written(Value::maxTextLength, [&](char * out) { return value.writeTo(out); }), text);
    EXPECT_TRUE(Value::tryFromString(text) == value) << text;
    EXPECT_TRUE(Value::fromString(text) == value) << text;
}

/// Each text is refused, by both readers, with a message that begins with the text.
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

/// Every two of the values, which are given in ascending order, compare as their places do.
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

/// Equal values hash alike, and these values, all different, fill the slots of a table
/// that takes its slot from the top 16 bits about as well as random numbers would: these
/// leave 1/e of the slots empty when there are as many values as slots.
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

/// The 65536 values that `make` makes of 0 to 65535.
template <class Make>
auto manyValues(Make make) {
    std::vector<decltype(make(0U))> values;
    for (unsigned number = 0; number < 65536; ++number) {
        values.push_back(make(number));
    }
    return values;
}

} // namespace valuechecks
