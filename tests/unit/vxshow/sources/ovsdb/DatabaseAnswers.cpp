#include "tests/unit/vxshow/sources/ovsdb/DatabaseAnswers.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

using enum Table;

std::string macRow(std::string_view mac, std::string_view targetColumn, unsigned logicalSwitch,
                   unsigned target, std::string_view ip) {
    std::string text = R"({"MAC":)" + jsonText(mac) + R"(,"ipaddr":)" + jsonText(ip);
    text.append(",\"").append(targetColumn).append("\":").append(row(target));
    return text.append(R"(,"logical_switch":)").append(row(logicalSwitch)).append("}");
}

} // namespace

std::string row(unsigned number) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), R"(["uuid","00000000-0000-4000-8000-%012u"])", number);
    return text.data();
}

std::string jsonText(std::string_view text) {
    std::string quoted = "\"";
    for (char const c : text) {
        if (c == '"' || c == '\\') {
            quoted.push_back('\\');
            quoted.push_back(c);
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
            quoted.append(escape.data());
        } else {
            quoted.push_back(c);
        }
    }
    return quoted.append("\"");
}

Database::Database() {
    auto & self = *this;
    self[logicalSwitch] = {R"({"_uuid":)" + row(1) + R"(,"name":"red","tunnel_key":5001})",
                           R"({"_uuid":)" + row(2) +
                               R"(,"name":"keyless","tunnel_key":["set",[]]})"};
    self[physicalLocator] = {
        R"({"_uuid":)" + row(11) + R"(,"dst_ip":"10.0.0.1","tunnel_key":["set",[]]})",
        R"({"_uuid":)" + row(12) + R"(,"dst_ip":"10.0.0.2","tunnel_key":["set",[]]})",
        R"({"_uuid":)" + row(13) + R"(,"dst_ip":"10.0.0.3","tunnel_key":5003})"};
    self[physicalLocatorSet] = {R"({"_uuid":)" + row(21) + R"(,"locators":["set",[)" + row(11) +
                                "," + row(12) + "]]}"};
    self[physicalSwitch] = {R"({"name":"leaf1","ports":["set",[]],"tunnel_ips":"10.0.0.1"})"};
}

Database & Database::unicast(Table table, std::string_view mac, unsigned logicalSwitch,
                             unsigned locator, std::string_view ip) {
    (*this)[table].push_back(macRow(mac, "locator", logicalSwitch, locator, ip));
    return *this;
}

Database & Database::multicast(Table table, std::string_view mac, unsigned logicalSwitch,
                               unsigned locatorSet, std::string_view ip) {
    (*this)[table].push_back(macRow(mac, "locator_set", logicalSwitch, locatorSet, ip));
    return *this;
}

std::string Database::answer() const {
    std::string text;
    for (auto const & table : rows) {
        text.append(text.empty() ? "[" : ",").append(R"({"rows":[)");
        for (auto const & one : table) {
            text.append(&one == &table.front() ? "" : ",").append(one);
        }
        text.append("]}");
    }
    return text.append("]\n");
}

Answer readAnswer(std::string_view answer) {
    return readDatabase(system::FileBytes::copyOf(answer), Request::whole(), {"lab"});
}

Answer readAnswer(Database const & database) {
    return readAnswer(database.answer());
}

std::string answerError(std::string_view answer) {
    try {
        readAnswer(answer);
    } catch (AnswerError const & error) {
        std::string const line(error.what());
        EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](char c) {
            return c >= ' ' && c <= '~';
        })) << line;
        return line;
    }
    return "accepted";
}

std::string capture(std::string const & name) {
    std::ifstream file(HARDWARE_VTEP_CAPTURES "/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace vxshow::test
