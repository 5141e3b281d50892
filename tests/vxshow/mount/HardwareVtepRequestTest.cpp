#include "tests/vxshow/mount/HardwareVtepAnswers.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace vxshow::test {

TEST(HardwareVtepRequest, TheWholeIsWhatTheCapturedAnswerWasAskedWith) {
    auto captured = capture("query-request.json");
    captured.erase(std::remove(captured.begin(), captured.end(), '\n'), captured.end());
    EXPECT_EQ(HardwareVtepRequest::whole().text(), captured);
}

TEST(HardwareVtepRequest, TheSurveyIsOneSelect) {
    EXPECT_EQ(HardwareVtepRequest::survey().text(),
              R"(["hardware_vtep",{"op":"select","table":"Logical_Switch","where":[],)"
              R"("columns":["_uuid","name","tunnel_key"]}])");
}

TEST(HardwareVtepRequest, ALogicalSwitchIsNamedInTheSelectsOfTheMacTablesAlone) {
    auto const uuid = *ovsdb::readUuid("0f1e2d3c-0bec-47b0-b898-d190f9ebdacc");
    auto const text = HardwareVtepRequest::of({uuid}).text();
    std::string_view const where =
        R"("where":[["logical_switch","==",["uuid","0f1e2d3c-0bec-47b0-b898-d190f9ebdacc"]]])";
    std::size_t count = 0;
    for (auto at = text.find(where); at != std::string::npos; at = text.find(where, at + 1)) {
        ++count;
    }
    EXPECT_EQ(count, 4);
    EXPECT_NE(text.find(R"("table":"Logical_Switch","where":[],)"), std::string::npos);
    EXPECT_NE(text.find(R"("table":"Mcast_Macs_Local","where":[["logical_switch",)"),
              std::string::npos);
}

TEST(HardwareVtepRequest, TooManyLogicalSwitchesAreNotNamed) {
    std::set<ovsdb::Uuid> rows;
    for (Vex::U64 number = 0; number < HardwareVtepRequest::mostPushed + 1; ++number) {
        rows.insert({1, number});
    }
    EXPECT_EQ(HardwareVtepRequest::of(rows).text(), HardwareVtepRequest::whole().text());
    EXPECT_EQ(HardwareVtepRequest::of(rows).pushed(), std::nullopt);
    rows.erase(rows.begin());
    EXPECT_EQ(HardwareVtepRequest::of(rows).pushed(), rows);
}

} // namespace vxshow::test
