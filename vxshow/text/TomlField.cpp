#include "vxshow/text/TomlField.h"

#include "vxshow/text/Quoting.h"

#include <array>
#include <charconv>

namespace vxshow::text {

namespace {

std::string shownNumber(double number) {
    std::array<char, 32> text;
    auto const end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

struct Shown {
    std::string operator()(std::string const & text) const { return '"' + shownText(text) + '"'; }

    std::string operator()(std::int64_t number) const { return std::to_string(number); }

    std::string operator()(double number) const { return shownNumber(number); }

    std::string operator()(bool boolean) const { return boolean ? "true" : "false"; }

    std::string operator()(TomlValue::Date) const { return "a date or time"; }

    std::string operator()(TomlValue::Array const & array) const {
        return array.empty() ? "an empty array" : "an array";
    }

    std::string operator()(TomlValue::Table const &) const { return "a table"; }
};

std::string nameOf(TomlPlace place, std::string const & key) {
    auto const name = std::to_string(place.line) + ":" + std::to_string(place.column);
    return key.empty() ? name : name + ": " + key;
}

[[noreturn]] void refuseAt(TomlPlace place, std::string const & key, std::string_view found,
                           std::string_view expected) {
    throw TomlRefusal(
        nameOf(place, key).append(": found ").append(found).append(", expected ").append(expected));
}

} // namespace

std::string TomlField::where() const {
    return nameOf(value_->place, key_);
}

void TomlField::refuse(std::string_view expected) const {
    refuse(std::visit(Shown(), value_->content), expected);
}

void TomlField::refuse(std::string_view found, std::string_view expected) const {
    refuseAt(value_->place, key_, found, expected);
}

template <class Type>
Type const & TomlField::as(std::string_view expected) const {
    if (auto const * const content = std::get_if<Type>(&value_->content)) {
        return *content;
    }
    refuse(expected);
}

std::string const & TomlField::text(std::string_view expected) const {
    return as<std::string>(expected);
}

bool TomlField::boolean(std::string_view expected) const {
    return as<bool>(expected);
}

std::int64_t TomlField::integer(std::string_view expected) const {
    return as<std::int64_t>(expected);
}

double TomlField::number(std::string_view expected) const {
    if (auto const * const integer = std::get_if<std::int64_t>(&value_->content)) {
        return static_cast<double>(*integer);
    }
    return as<double>(expected);
}

std::vector<TomlField> TomlField::elements(std::string_view expected) const {
    std::vector<TomlField> fields;
    for (TomlValue const & element : as<TomlValue::Array>(expected)) {
        fields.push_back(TomlField(element, key_ + "[" + std::to_string(fields.size()) + "]"));
    }
    return fields;
}

TomlValue::Table const & TomlField::table(std::string_view expected) const {
    return as<TomlValue::Table>(expected);
}

std::string const * TomlField::findText() const noexcept {
    return std::get_if<std::string>(&value_->content);
}

bool TomlField::isTable() const noexcept {
    return std::holds_alternative<TomlValue::Table>(value_->content);
}

std::optional<TomlField> TomlField::find(std::string_view name) const {
    if (auto const * const members = std::get_if<TomlValue::Table>(&value_->content)) {
        for (TomlMember const & member : *members) {
            if (member.name == name) {
                return at(member);
            }
        }
    }
    return std::nullopt;
}

TomlField TomlField::required(std::string_view name) const {
    if (auto field = find(name)) {
        return *std::move(field);
    }
    refuse('"' + std::string(name) + "\" in it");
}

TomlField TomlField::at(TomlMember const & member) const {
    return {member.value, key_ + (key_.empty() ? "" : ".") + shownMember(member.name)};
}

void TomlField::refuseKey(TomlMember const & member, std::string_view note,
                          std::string_view expected) const {
    refuseAt(member.place, key_, '"' + shownText(member.name) + '"' + std::string(note), expected);
}

} // namespace vxshow::text
