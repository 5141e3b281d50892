#include "fuzz/harness/JsonTokens.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>

/// Changes JSON by its tokens. A change of single bytes mostly gives what is not JSON, and is
/// refused before it reaches anything else.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t * bytes, std::size_t size, std::size_t most);

namespace fuzz {

namespace {

using Tokens = std::vector<std::string_view>;
using Random = std::minstd_rand;

constexpr std::array<std::string_view, 24> words{"0",
                                                 "1",
                                                 "-1",
                                                 "65535",
                                                 "16777215",
                                                 "16777216",
                                                 "4294967295",
                                                 "4294967296",
                                                 "1e3",
                                                 "1.5",
                                                 "true",
                                                 "false",
                                                 "null",
                                                 "\"\"",
                                                 "[]",
                                                 "{}",
                                                 "\"10\"",
                                                 "\"010\"",
                                                 "\"0.0.0.0\"",
                                                 "\"::1\"",
                                                 "\"10.0.0.1\"",
                                                 "\"02:00:00:00:00:01\"",
                                                 "\"\\u0000\"",
                                                 "\"\\ud83d\\ude00\""};

std::size_t pick(Random & random, std::size_t count) {
    return count == 0 ? 0 : random() % count;
}

std::string joined(Tokens const & tokens, std::size_t first, std::size_t last) {
    std::string text;
    for (auto at = first; at < last; ++at) {
        text.append(tokens[at]);
    }
    return text;
}

/// The place of a token that is a string or a plain value.
std::size_t scalar(Tokens const & tokens, Random & random) {
    auto at = pick(random, tokens.size());
    for (std::size_t tried = 0; tried < tokens.size(); ++tried, at = (at + 1) % tokens.size()) {
        if (std::string_view("{}[]:, \t\r\n").find(tokens[at][0]) == std::string_view::npos) {
            break;
        }
    }
    return at;
}

/// The token changed inside its quotes, by libFuzzer and its dictionary.
std::string changed(std::string_view token) {
    bool const quoted = token.size() >= 2 && token[0] == '"';
    std::string inner(quoted ? token.substr(1, token.size() - 2) : token);
    auto const size = inner.size();
    inner.resize(size + 32);
    inner.resize(
        LLVMFuzzerMutate(reinterpret_cast<std::uint8_t *>(inner.data()), size, inner.size()));
    return quoted ? '"' + inner + '"' : inner;
}

/// `with` in place of the tokens from `first` to `last`.
std::string replaced(Tokens const & tokens, std::size_t first, std::size_t last,
                     std::string_view with) {
    return joined(tokens, 0, first).append(with).append(joined(tokens, last, tokens.size()));
}

/// The value at `first` taken away, with the comma after it.
std::string without(Tokens const & tokens, std::size_t first) {
    auto last = pastJsonValue(tokens, first);
    if (last < tokens.size() && tokens[last] == ",") {
        ++last;
    }
    return replaced(tokens, first, last, "");
}

std::string mutated(Tokens const & tokens, Random & random) {
    auto const at = pick(random, tokens.size());
    auto const other = pick(random, tokens.size());
    auto const value = joined(tokens, other, pastJsonValue(tokens, other));
    switch (random() % 8) {
    case 0:
        return without(tokens, at);
    case 1: // once more, here or elsewhere
        return replaced(tokens, at, at, value + ",");
    case 2:
        return replaced(tokens, at, pastJsonValue(tokens, at), value);
    case 3: {
        auto const place = scalar(tokens, random);
        return replaced(tokens, place, place + 1, words[pick(random, words.size())]);
    }
    case 4: {
        auto const place = scalar(tokens, random);
        return replaced(tokens, place, place + 1, tokens[scalar(tokens, random)]);
    }
    case 5:
        return replaced(tokens, at, pastJsonValue(tokens, at), '[' + value + ']');
    default: {
        auto const place = scalar(tokens, random);
        return replaced(tokens, place, place + 1, changed(tokens[place]));
    }
    }
}

std::size_t put(std::string const & text, std::uint8_t * bytes, std::size_t most) {
    auto const size = std::min(text.size(), most);
    std::memcpy(bytes, text.data(), size);
    return size;
}

std::string_view textOf(std::uint8_t const * bytes, std::size_t size) {
    return {reinterpret_cast<char const *>(bytes), size};
}

} // namespace

} // namespace fuzz

/// Called by libFuzzer in place of its own changes.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t * bytes, std::size_t size,
                                               std::size_t most, unsigned seed) {
    fuzz::Random random(seed);
    auto const tokens = fuzz::jsonTokens(fuzz::textOf(bytes, size));
    if (tokens.empty() || random() % 8 == 0) {
        return LLVMFuzzerMutate(bytes, size, most);
    }
    return fuzz::put(fuzz::mutated(tokens, random), bytes, most);
}

/// Called by libFuzzer to put two inputs together: a value of one takes the place of one of the
/// other.
extern "C" std::size_t LLVMFuzzerCustomCrossOver(std::uint8_t const * one, std::size_t oneSize,
                                                 std::uint8_t const * other, std::size_t otherSize,
                                                 std::uint8_t * out, std::size_t most,
                                                 unsigned seed) {
    fuzz::Random random(seed);
    auto const tokens = fuzz::jsonTokens(fuzz::textOf(one, oneSize));
    auto const others = fuzz::jsonTokens(fuzz::textOf(other, otherSize));
    auto const at = fuzz::pick(random, tokens.size());
    auto const from = fuzz::pick(random, others.size());
    auto const value = fuzz::joined(others, from, fuzz::pastJsonValue(others, from));
    return fuzz::put(fuzz::replaced(tokens, at, fuzz::pastJsonValue(tokens, at), value), out, most);
}
