#include "VxlanController/arp/SetOutput.h"
#include "tests/unit/VxlanController/arp/Sets.h"

#include <gtest/gtest.h>

namespace Cli = VxlanController::Cli;

namespace {

std::string jsonOf(Vex::Ptr<Cli::VxlanFdbSet const> const & set) {
    return printed(jsonFormat,
                   [&](outfmt::Printer & printer) { Cli::renderVxlanFdbSetJson(printer, set); });
}

std::string jsonOf(Vex::Ptr<Cli::VxlanVtepSet const> const & set) {
    return printed(jsonFormat,
                   [&](outfmt::Printer & printer) { Cli::renderVxlanVtepSetJson(printer, set); });
}

/// A document that holds only `table`.
std::string documentOf(Vex::Ptr<Cli::VxlanArpTable const> const & table) {
    return printed(jsonFormat, [&](outfmt::Printer & printer) {
        printer.start();
        Cli::renderVxlanArpTableJson(printer, table);
        printer.end();
    });
}

} // namespace

TEST(ArpSetJson, AnEmptySetIsAnEmptyDictionary) {
    EXPECT_EQ(jsonOf(Cli::vxlanFdbSetFactory()), "{\"vnis\":{}}\n");
    EXPECT_EQ(jsonOf(Cli::vxlanVtepSetFactory()), "{\"switches\":{}}\n");
}

TEST(ArpSetJson, ANullSetCountsAsEmpty) {
    EXPECT_EQ(jsonOf(Vex::Ptr<Cli::VxlanFdbSet const>()), "{\"vnis\":{}}\n");
    EXPECT_EQ(jsonOf(Vex::Ptr<Cli::VxlanVtepSet const>()), "{\"switches\":{}}\n");
}

TEST(ArpSetJson, ATableIsOrderedByAddress) {
    auto const set = Cli::vxlanFdbSetFactory();
    addTable(*set, "0.16.2",
             {{"10.0.0.2", "00:1C:73:0A:0B:0C", 3, 255}, {"9.0.0.1", "02:00:00:00:00:01"}});
    std::string const table = R"("0.16.2":{"addresses":{)"
                              R"("9.0.0.1":{"macAddress":"02:00:00:00:00:01","changes":0,)"
                              R"("preference":0},)"
                              R"("10.0.0.2":{"macAddress":"00:1c:73:0a:0b:0c","changes":3,)"
                              R"("preference":255}}})";
    EXPECT_EQ(documentOf(set->arpTable("0.16.2")), "{" + table + "}\n");
    EXPECT_EQ(jsonOf(set), "{\"vnis\":{" + table + "}}\n");
}

TEST(ArpSetJson, ATableWithoutEntriesIsListed) {
    auto const set = Cli::vxlanVtepSetFactory();
    addTable(*set->vtepIs("leaf2"), "10", {});
    set->vtepIs("leaf1");
    EXPECT_EQ(jsonOf(set), R"({"switches":{"leaf1":{"vnis":{}},)"
                           R"("leaf2":{"vnis":{"10":{"addresses":{}}}}}})"
                           "\n");
}

TEST(ArpSetJson, ANullTableIsLeftOut) {
    EXPECT_EQ(documentOf(nullptr), "{}\n");
}

TEST(ArpSetJson, AnIpv6AddressIsNotCut) {
    auto const set = Cli::vxlanFdbSetFactory();
    addTable(*set, "10", {{"2001:db8:aaaa:bbbb:cccc:dddd:eeee:ffff", "02:00:00:00:00:01"}});
    EXPECT_NE(jsonOf(set).find("{\"2001:db8:aaaa:bbbb:cccc:dddd:eeee:ffff\":{"), std::string::npos);
}

TEST(ArpSetJson, AChangeCountAbove2147483647IsNegative) {
    auto const set = Cli::vxlanFdbSetFactory();
    addTable(*set, "10", {{"10.0.0.1", "02:00:00:00:00:01", 4294967294}});
    EXPECT_NE(jsonOf(set).find("\"changes\":-2,"), std::string::npos);
}

TEST(ArpSetJson, ASwitchNameIsNotCutAndCanHoldAnyBytes) {
    auto const set = Cli::vxlanVtepSetFactory();
    set->vtepIs("a\"b\\\n\xff%s-and-a-name-of-more-than-19-bytes");
    EXPECT_EQ(jsonOf(set), R"({"switches":{"a\"b\\\n)"
                           "\xEF\xBF\xBD%s-and-a-name-of-more-than-19-bytes\":{\"vnis\":{}}}}\n");
}

TEST(ArpSetJson, NeitherFormPrintsInTheModeOfTheOther) {
    auto const advertised = Cli::vxlanFdbSetFactory();
    addTable(*advertised, "10", {{"10.0.0.1", "02:00:00:00:00:01"}});
    auto const received = Cli::vxlanVtepSetFactory();
    addTable(*received->vtepIs("leaf1"), "10", {{"10.0.0.1", "02:00:00:00:00:01"}});
    EXPECT_EQ(printed(textFormat,
                      [&](outfmt::Printer & printer) {
                          Cli::renderVxlanFdbSetJson(printer, advertised);
                          Cli::renderVxlanVtepSetJson(printer, received);
                      }),
              "");
    EXPECT_EQ(printed(jsonFormat,
                      [&](outfmt::Printer & printer) {
                          Cli::renderVxlanFdbSetText(printer, advertised);
                          Cli::renderVxlanVtepSetText(printer, received);
                      }),
              "");
}
