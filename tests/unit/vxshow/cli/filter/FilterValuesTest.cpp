#include "vxshow/cli/filter/FilterValues.h"

#include <gtest/gtest.h>

namespace {

using namespace vxshow::cli::filter;
using vxshow::state::narrow::Intervals;

/// "1-2 5-5", with each value in its own text form.
template <class Value>
std::string shown(Intervals<Value> const & set) {
    std::string text;
    for (auto const & [first, last] : set.intervals()) {
        text.append(text.empty() ? "" : " ")
            .append(first.stringValue())
            .append("-")
            .append(last.stringValue());
    }
    return text;
}

template <class Read>
std::string refusalOf(Read && read, std::string const & text) {
    try {
        read({text});
    } catch (ValueError const & error) {
        return error.what();
    }
    ADD_FAILURE() << text << " is accepted";
    return "";
}

std::string vnis(Texts const & texts) {
    auto const filter = readVnis(texts);
    return filter.many.empty() ? "one " + filter.one.stringValue() : shown(filter.many);
}

std::string macs(Texts const & texts) {
    auto const filter = readMacs(texts);
    return filter.many.empty() ? "one " + filter.one.stringValue() : shown(filter.many);
}

std::string ips(Texts const & texts) {
    auto const filter = readIps(texts);
    return filter.many.empty() ? "one " + filter.one.stringValue() : shown(filter.many);
}

} // namespace

TEST(FilterValues, OnePlainValueIsForTheLibrary) {
    EXPECT_EQ(vnis({"10"}), "one 10");
    EXPECT_EQ(vnis({"0.16.2"}), "one 4098");
    EXPECT_EQ(vnis({"10", "10"}), "one 10");
    EXPECT_EQ(vnis({"10-10"}), "one 10");
    EXPECT_EQ(macs({"00:1c:73:0a:0b:0c"}), "one 00:1c:73:0a:0b:0c");
    EXPECT_EQ(macs({"001C730a0b0c,001c.730a.0b0c"}), "one 00:1c:73:0a:0b:0c");
    EXPECT_EQ(ips({"10.0.0.1"}), "one 10.0.0.1");
    EXPECT_EQ(ips({"2001:db8::1/128"}), "one 2001:db8::1");
    EXPECT_EQ(readPrefixes({"10.0.0.0/8"}).one.stringValue(), "10.0.0.0/8");
    EXPECT_TRUE(readPrefixes({"10.0.0.0/8"}).many.empty());
}

TEST(FilterValues, CommasAndRepeatedOptionsMakeAList) {
    EXPECT_EQ(vnis({"30,10", "20-25"}), "10-10 20-25 30-30");
    EXPECT_EQ(vnis({"10-20,15-30"}), "10-30");
    EXPECT_EQ(ips({"10.0.0.1", "2001:db8::1,10.0.0.0/30"}),
              "10.0.0.0-10.0.0.3 2001:db8::1-2001:db8::1");
    EXPECT_EQ(shown(readPrefixes({"10.0.0.0/8,::/0"}).many),
              "10.0.0.0-10.255.255.255 ::-ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff");
}

TEST(FilterValues, ARangeOfAllVnisIsOneInterval) {
    EXPECT_EQ(vnis({"1-16777215"}), "1-16777215");
    EXPECT_EQ(vnis({"0.0.1-255.255.255"}), "1-16777215");
}

TEST(FilterValues, AMacPrefixIsWrittenWithItsLengthOrAStar) {
    std::string const vendor = "00:1c:73:00:00:00-00:1c:73:ff:ff:ff";
    for (char const * text : {"00:1c:73/24", "00:1c:73:*", "00-1c-73-*", "001c.73*", "001c73*",
                              "001c73/24", "00:1C:73:00:00:00/24", "00:1c:73*"}) {
        EXPECT_EQ(macs({text}), vendor) << text;
    }
}

TEST(FilterValues, AMacPrefixOfAnyLength) {
    EXPECT_EQ(macs({"00:00/0"}), "00:00:00:00:00:00-ff:ff:ff:ff:ff:ff");
    EXPECT_EQ(macs({"01:00/9"}), "01:00:00:00:00:00-01:7f:ff:ff:ff:ff");
    EXPECT_EQ(macs({"00:1c:73:0a:0b:0c/48"}), "one 00:1c:73:0a:0b:0c");
}

TEST(FilterValues, TheAllZeroMacAddressLetsEveryAddressThroughUnlessItsLengthIsGiven) {
    EXPECT_EQ(macs({"00:00:00:00:00:00"}), "one 00:00:00:00:00:00");
    EXPECT_EQ(macs({"00:1c:73:0a:0b:0c,000000000000"}), "one 00:00:00:00:00:00");
    EXPECT_EQ(macs({"00:00:00:00:00:00/48"}), "00:00:00:00:00:00-00:00:00:00:00:00");
}

TEST(FilterValues, VtepsAreAddressesAndIpv4Subnets) {
    auto const filter = readVteps({"10.0.0.1,10.1.0.0/16", "10.0.0.2"});
    ASSERT_EQ(filter.addresses.size(), 2);
    EXPECT_EQ(filter.addresses[1].stringValue(), "10.0.0.2");
    EXPECT_EQ(shown(filter.subnets), "10.1.0.0-10.1.255.255");
    EXPECT_EQ(refusalOf(readVteps, "2001:db8::/32"),
              "'2001:db8::/32': expected an IPv4 subnet such as 10.0.0.0/24");
}

TEST(FilterValues, AnInvalidValueOfAListIsNamed) {
    EXPECT_EQ(refusalOf(readVnis, "10,x"),
              "'x': expected a VNI from 0 to 16777215, decimal or dotted such as 0.16.2");
    EXPECT_EQ(refusalOf(readVnis, "10,,20").substr(0, 13), "'': expected ");
    EXPECT_EQ(refusalOf(readVnis, "10-x"),
              "'10-x': expected a range of VNIs from 0 to 16777215 such as 10-20");
    EXPECT_EQ(refusalOf(readVnis, "10-20-30"),
              "'10-20-30': expected a range of VNIs from 0 to 16777215 such as 10-20");
    EXPECT_EQ(refusalOf(readVnis, "1-16777216"),
              "'1-16777216': expected a range of VNIs from 0 to 16777215 such as 10-20");
    EXPECT_EQ(refusalOf(readVnis, "20-10"), "'20-10': expected the lower VNI first, 10-20");
    EXPECT_EQ(refusalOf(readIps, "10.0.0.1,").substr(0, 13), "'': expected ");
    EXPECT_EQ(refusalOf(readIps, "10.0.0.1/24"),
              "'10.0.0.1/24': expected 10.0.0.0/24, with no bits set beyond the prefix length");
    EXPECT_EQ(refusalOf(readPrefixes, "10.0.0.0/8,").substr(0, 13), "'': expected ");
}

TEST(FilterValues, AnInvalidMacPrefixIsRefused) {
    for (std::string const text :
         {"*", "/24", ":*", "00:1c:7*", "00:1c:73*:0a", "00:1c:73/25", "00:1c:73/", "00:1c:73/x",
          "00:1c:73/-1", "00:1c.73/24", "0:1c:73/24", "00:1c:73:/24", "00:1c:73:0a:0b:0c:0d/48",
          "g0:1c:73:*", "001c730a0b0c0d*", "00:1c:73/24/24", "**", "001c7.3/20",
          "00:1c:73:0a/49"}) {
        EXPECT_EQ(refusalOf(readMacs, text),
                  "'" + text +
                      "': expected an Ethernet address prefix such as 00:1c:73/24 or 00:1c:73:*");
    }
    EXPECT_EQ(refusalOf(readMacs, "00:1c:73/20"),
              "'00:1c:73/20': expected 00:1c:70:00:00:00/20, with no bits set beyond the prefix "
              "length");
    EXPECT_EQ(refusalOf(readMacs, "001c730a0b0").substr(0, 15), "'001c730a0b0': ");
}

TEST(FilterValues, ManyValuesAreAList) {
    std::string text = "0";
    for (int vni = 2; vni < 200000; vni += 2) {
        text += "," + std::to_string(vni);
    }
    auto const filter = readVnis({text});
    EXPECT_EQ(filter.many.intervals().size(), 100000);
    EXPECT_TRUE(filter.many.contains(Vxlan::Vni(199998)));
    EXPECT_FALSE(filter.many.contains(Vxlan::Vni(199999)));
}
