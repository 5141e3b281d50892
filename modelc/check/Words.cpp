#include "modelc/check/Words.h"

#include <algorithm>
#include <array>

namespace modelc {

bool startsUpper(std::string_view word) noexcept {
    return !word.empty() && word.front() >= 'A' && word.front() <= 'Z';
}

bool isCppKeyword(std::string_view word) noexcept {
    static constexpr std::array<std::string_view, 92> keywords{
        "alignas",       "alignof",     "and",
        "and_eq",        "asm",         "auto",
        "bitand",        "bitor",       "bool",
        "break",         "case",        "catch",
        "char",          "char16_t",    "char32_t",
        "char8_t",       "class",       "co_await",
        "co_return",     "co_yield",    "compl",
        "concept",       "const",       "const_cast",
        "consteval",     "constexpr",   "constinit",
        "continue",      "decltype",    "default",
        "delete",        "do",          "double",
        "dynamic_cast",  "else",        "enum",
        "explicit",      "export",      "extern",
        "false",         "float",       "for",
        "friend",        "goto",        "if",
        "inline",        "int",         "long",
        "mutable",       "namespace",   "new",
        "noexcept",      "not",         "not_eq",
        "nullptr",       "operator",    "or",
        "or_eq",         "private",     "protected",
        "public",        "register",    "reinterpret_cast",
        "requires",      "return",      "short",
        "signed",        "sizeof",      "static",
        "static_assert", "static_cast", "struct",
        "switch",        "template",    "this",
        "thread_local",  "throw",       "true",
        "try",           "typedef",     "typeid",
        "typename",      "union",       "unsigned",
        "using",         "virtual",     "void",
        "volatile",      "wchar_t",     "while",
        "xor",           "xor_eq"};
    static_assert(std::is_sorted(keywords.begin(), keywords.end()));
    return std::binary_search(keywords.begin(), keywords.end(), word);
}

} // namespace modelc
