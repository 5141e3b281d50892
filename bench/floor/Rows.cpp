#include "bench/floor/Rows.h"

#include <simdjson.h>

#include <algorithm>
#include <charconv>

namespace bench::floor {

namespace {

namespace json = simdjson::ondemand;

std::uint64_t hexDigit(char digit) {
    auto const value = static_cast<unsigned char>(digit);
    return (value & 0xFU) + 9U * (value >> 6U);
}

/// Reads 00:1c:73:0a:0b:0c.
std::uint64_t macOf(char const * text) {
    std::uint64_t mac = 0;
    for (std::size_t at = 0; at < 17; at += 3) {
        mac = mac << 8U | hexDigit(text[at]) << 4U | hexDigit(text[at + 1]);
    }
    return mac;
}

std::uint32_t ipOf(std::string_view text) {
    std::uint32_t ip = 0;
    std::uint32_t byte = 0;
    for (char c : text) {
        if (c == '.') {
            ip = ip << 8U | byte;
            byte = 0;
        } else {
            byte = byte * 10 + static_cast<std::uint32_t>(c - '0');
        }
    }
    return ip << 8U | byte;
}

void readVni(json::object tables, Rows & into) {
    for (auto table : tables) {
        for (auto entry : table.value().get_object()) {
            Row row{macOf(entry.key().value().raw()), 0, 0};
            for (auto member : entry.value().get_object()) {
                if (*member.key().value().raw() == 'v') {
                    row.vtep = ipOf(member.value().get_string());
                } else {
                    row.moves = static_cast<std::uint32_t>(member.value().get_uint64());
                }
            }
            into.rows.push_back(row);
        }
    }
}

void readSwitch(json::object vnis, Rows & into) {
    for (auto vni : vnis) {
        std::string_view const name = vni.unescaped_key();
        std::uint32_t number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        std::size_t const first = into.rows.size();
        readVni(vni.value().get_object(), into);
        auto const begin = into.rows.begin() + static_cast<std::ptrdiff_t>(first);
        std::sort(begin, into.rows.end(),
                  [](Row const & a, Row const & b) { return a.mac < b.mac; });
        into.vnis.push_back({number, first, into.rows.size() - first});
    }
}

} // namespace

Rows readRows(char const * path) {
    simdjson::padded_string const text = simdjson::padded_string::load(path);
    json::parser parser;
    json::document document = parser.iterate(text);
    Rows rows;
    for (auto entry : document["received"]["switches"].get_object()) {
        std::size_t const first = rows.vnis.size();
        std::string_view const name = entry.unescaped_key();
        rows.switches.push_back({std::string(name), first, 0});
        readSwitch(entry.value().get_object(), rows);
        rows.switches.back().vniCount = rows.vnis.size() - first;
        std::sort(rows.vnis.begin() + static_cast<std::ptrdiff_t>(first), rows.vnis.end(),
                  [](Vni const & a, Vni const & b) { return a.number < b.number; });
    }
    std::sort(rows.switches.begin(), rows.switches.end(),
              [](Switch const & a, Switch const & b) { return a.name < b.name; });
    return rows;
}

} // namespace bench::floor
