#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace outfmt::test {

/// A JSON value for comparison in tests: members in their order, with repeated keys kept.
struct Json {
    enum class Kind { null, boolean, number, string, list, object };

    Kind kind = Kind::null;
    std::string text; ///< for a scalar: the decoded string, or the literal unchanged
    std::vector<std::pair<std::string, Json>> members; ///< of a list, with empty keys

    bool operator==(Json const &) const = default;

    static Json string(std::string text) { return {Kind::string, std::move(text), {}}; }

    static Json list(std::vector<Json> elements = {});
    static Json object(std::vector<std::pair<std::string, Json>> members = {});
};

/// Reads one document that ends with a newline, strictly by RFC 8259 and RFC 3629; throws
/// std::runtime_error for anything else.
Json readJson(std::string_view text);

} // namespace outfmt::test
