#include "vxshow/sources/ovsdb/DatabaseSchema.h"

#include "vxshow/sources/AnswerError.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

DatabaseSchema schemaOf(std::string const & text) {
    return readSchema(system::FileBytes::copyOf(text));
}

std::string errorOf(std::string const & text) {
    try {
        schemaOf(text);
    } catch (AnswerError const & error) {
        return error.what();
    }
    return "accepted";
}

} // namespace

TEST(OvsdbSchema, IsWholeWithAllThatOlderOnesLack) {
    auto const schema = schemaOf(R"({"name":"hardware_vtep","version":"1.7.0","tables":{)"
                                 R"("Logical_Router":{"columns":{}},"Arp_Sources_Local":{},)"
                                 R"("Arp_Sources_Remote":{},"Global":{"columns":{}},)"
                                 R"("Physical_Locator":{"columns":{"dst_ip":{"type":"string"},)"
                                 R"("tunnel_key":{"type":{}}}}}})");
    EXPECT_TRUE(schema.isWhole());
    EXPECT_EQ(schema.version, "1.7.0");
    EXPECT_TRUE(schema.remarks().empty());
}

TEST(OvsdbSchema, OnlyWhatCannotBeShownIsInTheRemarks) {
    auto const router = R"("Logical_Router":{})";
    auto const locator = R"("Physical_Locator":{"columns":{"tunnel_key":{}}})";
    auto const with = [](std::string const & tables, Subjects subjects) {
        auto const schema = schemaOf(R"({"version":"1\u001b","tables":{)" + tables + "}}");
        return Findings{.remarks = schema.remarks()}.warning(subjects).value_or("none");
    };
    auto const noRouters =
        "its schema, version 1\\x1b, has no Logical_Router: no routers are shown";
    auto const noKeys = "its schema, version 1\\x1b, has no Physical_Locator.tunnel_key: "
                        "entries of a logical switch without a tunnel_key are left out";
    EXPECT_EQ(with(std::string(router) + "," + locator, Subjects::every()), "none");
    EXPECT_EQ(with(locator, Subject::routers), noRouters);
    EXPECT_EQ(with(locator, Subject::localMacs), "none");
    EXPECT_EQ(with(router, Subject::routers), "none");
    EXPECT_EQ(with(router, Subject::localMacs), noKeys);
    EXPECT_EQ(with("", Subjects::every()), std::string(noRouters) + "; " + noKeys);
}

TEST(OvsdbSchema, AnythingElseIsRefused) {
    EXPECT_EQ(errorOf("{}"), "schema: 1:1: found an object, expected \"tables\" in it");
    EXPECT_EQ(errorOf(R"({"tables":[]})"),
              "schema: 1:11: tables: found an array, expected an object of tables");
    EXPECT_TRUE(errorOf("{").starts_with("schema: "));
}

} // namespace vxshow::test
