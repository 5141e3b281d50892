#include "VxlanController/arp/SetOutput.h"
#include "outfmt/Interrupt.h"
#include "tests/unit/VxlanController/arp/Sets.h"

#include <gtest/gtest.h>

namespace Cli = VxlanController::Cli;

namespace {

std::string textOf(Vex::Ptr<Cli::VxlanFdbSet const> const & set) {
    return printed(textFormat,
                   [&](outfmt::Printer & printer) { Cli::renderVxlanFdbSetText(printer, set); });
}

std::string textOf(Vex::Ptr<Cli::VxlanVtepSet const> const & set) {
    return printed(textFormat,
                   [&](outfmt::Printer & printer) { Cli::renderVxlanVtepSetText(printer, set); });
}

/// The advertised table with one binding in VNI 10.
std::string advertisedRow(Binding const & binding) {
    auto const set = Cli::vxlanFdbSetFactory();
    addTable(*set, "10", {binding});
    return textOf(set);
}

} // namespace

TEST(ArpSetText, AnEmptySetIsTheHeaderAnEmptyLineAndATotalOfZero) {
    EXPECT_EQ(textOf(Cli::vxlanFdbSetFactory()),
              "                       Advertised ARP Table\n"
              "-------------------------------------------------------------------------\n"
              "VNI      IP Address      MAC Address        Changes\n"
              "-------- --------------- ------------------ --------\n"
              "\n"
              "Total IP addresses for this criterion: 0\n");
    EXPECT_EQ(textOf(Cli::vxlanVtepSetFactory()),
              "                        Received ARP Table\n"
              "-------------------------------------------------------------------------\n"
              "Switch              VNI      IP Address      MAC Address        Changes\n"
              "------------------- -------- --------------- ------------------ ---------\n"
              "\n"
              "Total IP addresses for this criterion: 0\n");
}

TEST(ArpSetText, ANullSetCountsAsEmpty) {
    EXPECT_EQ(textOf(Vex::Ptr<Cli::VxlanFdbSet const>()), advertisedTable("", 0));
    EXPECT_EQ(textOf(Vex::Ptr<Cli::VxlanVtepSet const>()), receivedTable("", 0));
}

TEST(ArpSetText, AnIpv6AddressIsCutAt15Characters) {
    EXPECT_EQ(advertisedRow({"2001:db8:aaaa:bbbb:cccc:dddd:eeee:ffff", "02:00:00:00:00:01"}),
              advertisedTable("10       2001:db8:aaaa:b 0200.0000.0001     0        \n", 1));
    EXPECT_EQ(advertisedRow({"2001:db8:1:2::3", "02:00:00:00:00:01"}),
              advertisedTable("10       2001:db8:1:2::3 0200.0000.0001     0        \n", 1));
    auto const set = Cli::vxlanVtepSetFactory();
    addTable(*set->vtepIs("leaf1"), "10", {{"fe80::1c73:aff:fe0b:c0d", "02:00:00:00:00:01"}});
    EXPECT_EQ(textOf(set), receivedTable("leaf1               10       fe80::1c73:aff: "
                                         "0200.0000.0001     0        \n",
                                         1));
}

TEST(ArpSetText, TheLongestIpv4AddressIsNotCut) {
    EXPECT_EQ(advertisedRow({"192.168.100.200", "02:00:00:00:00:01"}),
              advertisedTable("10       192.168.100.200 0200.0000.0001     0        \n", 1));
}

TEST(ArpSetText, Ipv4AddressesComeBeforeIpv6Addresses) {
    auto const set = Cli::vxlanFdbSetFactory();
    addTable(*set, "10",
             {{"::1", "02:00:00:00:00:01"},
              {"255.255.255.255", "02:00:00:00:00:02"},
              {"9.0.0.1", "02:00:00:00:00:03"},
              {"10.0.0.1", "02:00:00:00:00:04"}});
    EXPECT_EQ(textOf(set),
              advertisedTable("10       9.0.0.1         0200.0000.0003     0        \n"
                              "10       10.0.0.1        0200.0000.0004     0        \n"
                              "10       255.255.255.255 0200.0000.0002     0        \n"
                              "10       ::1             0200.0000.0001     0        \n",
                              4));
}

TEST(ArpSetText, AChangeCountWiderThanItsColumnWidensItsRow) {
    EXPECT_EQ(advertisedRow({"10.0.0.1", "02:00:00:00:00:01", 123456789}),
              advertisedTable("10       10.0.0.1        0200.0000.0001     123456789\n", 1));
    EXPECT_EQ(advertisedRow({"10.0.0.1", "02:00:00:00:00:01", 2147483647}),
              advertisedTable("10       10.0.0.1        0200.0000.0001     2147483647\n", 1));
}

TEST(ArpSetText, AChangeCountAbove2147483647IsNegative) {
    EXPECT_EQ(advertisedRow({"10.0.0.1", "02:00:00:00:00:01", 4294967295}),
              advertisedTable("10       10.0.0.1        0200.0000.0001     -1       \n", 1));
    EXPECT_EQ(advertisedRow({"10.0.0.1", "02:00:00:00:00:01", 2147483648}),
              advertisedTable("10       10.0.0.1        0200.0000.0001     -2147483648\n", 1));
}

TEST(ArpSetText, AVniWiderThanItsColumnWidensItsRow) {
    auto const set = Cli::vxlanFdbSetFactory();
    addTable(*set, "255.255.255", {{"10.0.0.1", "02:00:00:00:00:01"}});
    addTable(*set, "16777215", {{"10.0.0.1", "02:00:00:00:00:01"}});
    EXPECT_EQ(textOf(set),
              advertisedTable("16777215 10.0.0.1        0200.0000.0001     0        \n"
                              "255.255.255 10.0.0.1        0200.0000.0001     0        \n",
                              2));
}

TEST(ArpSetText, ASwitchNameIsCutAt19Bytes) {
    auto const set = Cli::vxlanVtepSetFactory();
    for (char const * name : {"abcdefghijklmnopqrs", "abcdefghijklmnopqrstuvwxyz"}) {
        addTable(*set->vtepIs(name), "10", {{"10.0.0.1", "02:00:00:00:00:01"}});
    }
    std::string const row =
        "abcdefghijklmnopqrs 10       10.0.0.1        0200.0000.0001     0        \n";
    EXPECT_EQ(textOf(set), receivedTable(row + row, 2));
}

TEST(ArpSetText, ASwitchNameWithPercentSignsIsPrintedUnchanged) {
    auto const set = Cli::vxlanVtepSetFactory();
    addTable(*set->vtepIs("%s%n%1000d"), "10", {{"10.0.0.1", "02:00:00:00:00:01"}});
    EXPECT_EQ(textOf(set), receivedTable("%s%n%1000d          10       10.0.0.1        "
                                         "0200.0000.0001     0        \n",
                                         1));
}

TEST(ArpSetText, TheTotalIsSummedOverTablesAndSwitches) {
    auto const set = Cli::vxlanVtepSetFactory();
    for (char const * name : {"leaf1", "leaf2"}) {
        for (char const * vni : {"10", "20"}) {
            addTable(*set->vtepIs(name), vni,
                     {{"10.0.0.1", "02:00:00:00:00:01"}, {"10.0.0.2", "02:00:00:00:00:01"}});
        }
    }
    std::string const text = textOf(set);
    EXPECT_EQ(text.substr(text.find("\n\n")), "\n\nTotal IP addresses for this criterion: 8\n");
}

TEST(ArpSetText, TheRowsOfOneSwitchHaveNoHeaderAndAreCounted) {
    auto const set = Cli::vxlanVtepSetFactory();
    auto const vtep = set->vtepIs("leaf1");
    addTable(*vtep, "20", {{"10.0.0.1", "02:00:00:00:00:01"}});
    addTable(*vtep, "100", {{"10.0.0.2", "02:00:00:00:00:02"}, {"10.0.0.1", "02:00:00:00:00:01"}});
    addTable(*vtep, "3", {});
    int rows = 0;
    EXPECT_EQ(
        printed(textFormat,
                [&](outfmt::Printer & printer) { rows = Cli::renderVxlanVtepText(printer, vtep); }),
        "leaf1               100      10.0.0.1        0200.0000.0001     0        \n"
        "leaf1               100      10.0.0.2        0200.0000.0002     0        \n"
        "leaf1               20       10.0.0.1        0200.0000.0001     0        \n");
    EXPECT_EQ(rows, 3);
}

TEST(ArpSetText, ANullSwitchHasNoRows) {
    EXPECT_EQ(printed(textFormat,
                      [&](outfmt::Printer & printer) {
                          EXPECT_EQ(Cli::renderVxlanVtepText(printer, nullptr), 0);
                      }),
              "");
}

TEST(ArpSetText, AnInterruptPassesThroughTheFunctions) {
    outfmt::clearInterrupt();
    OutputFile const file;
    outfmt::Printer printer(file.fd(), textFormat, true, false, true, 0);
    outfmt::requestInterrupt();
    EXPECT_THROW(Cli::renderVxlanFdbSetText(printer, Cli::vxlanFdbSetFactory()),
                 outfmt::SigIntException);
    EXPECT_THROW(Cli::renderVxlanVtepSetText(printer, Cli::vxlanVtepSetFactory()),
                 outfmt::SigIntException);
    outfmt::clearInterrupt();
}
