#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <algorithm>

TEST(Schema, IsPrintedWithoutAState) {
    Finished const finished = runVxshow({"schema", "mac-received"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(finished.out.substr(0, 64),
              "{\n  \"$schema\": \"https://json-schema.org/draft/2020-12/schema\",\n ");
    EXPECT_NE(finished.out.find("\"title\": \"mac received\""), std::string::npos);
    EXPECT_EQ(finished.out.substr(finished.out.size() - 6), "  }\n}\n");
}

TEST(Schema, WithoutANameTheNamesAreListed) {
    auto const out = runVxshow({"schema"}).out;
    EXPECT_EQ(out.substr(0, 35), "arp-advertised\narp-advertised.row\na");
    // Seven documents, two of which have a revision of their own, and seven kinds of rows.
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 16);
}

TEST(Schema, AnUnknownNameIsRefusedWithThoseThereAre) {
    EXPECT_EQ(refused({"schema", "mac"}),
              "schema: 'mac': expected one of arp-advertised, arp-advertised.row, arp-received, "
              "arp-received.row, mac-advertised, mac-advertised.revision-1, mac-advertised.row, "
              "mac-received, mac-received.revision-1, mac-received.row, router-detail, "
              "router-detail.row, router-map, router-map.row, router-routes, router-routes.row");
    EXPECT_EQ(refused({"schema", ""}).substr(0, 20), "schema: '': expected");
}

TEST(Schema, HasNoForms) {
    EXPECT_EQ(refused({"schema", "-o", "csv"}), "-o csv: not available for schema");
    EXPECT_EQ(refused({"schema", "--watch", "1"}), "--watch: not available for schema");
}
