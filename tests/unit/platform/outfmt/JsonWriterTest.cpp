#include "outfmt/JsonWriter.h"

#include "Descriptors.h"
#include "JsonReader.h"
#include "outfmt/AttrInfo.h"

#include <gtest/gtest.h>
#include <limits>
#include <stdexcept>

namespace outfmt::test {
namespace {

/// A document with every kind of container and attribute.
void printSample(Printer & printer) {
    BoolAttrInfo dotted(printer, "vniInDottedNotation");
    Attr32Info vni(printer, "vni");
    StringAttrInfo mac(printer, "macAddr");
    Attr64Info time(printer, "timeLearned");
    StringAttrInfo element(printer, "");
    dotted.setValue(false);
    vni.setValue(-10);
    mac.setValue("02:00:00:00:00:01");
    time.setValue(std::numeric_limits<std::int64_t>::min());

    printer.start();
    printer.addAttributesJson(1, dotted.getArg());
    printer.startDict("empty");
    printer.endDict();
    printer.startList("vnis");
    for (int entry = 0; entry < 2; ++entry) {
        printer.startListEntry();
        printer.addAttributesJson(3, vni.getArg(), mac.getArg(), time.getArg());
        printer.startList("vtepIpList");
        for (char const * address : {"10.0.0.1", "10.0.0.2"}) {
            element.setValue(address);
            printer.addAttributesJson(1, element.getArg());
        }
        printer.endList();
        printer.endListEntry();
        dotted.setValue(true);
    }
    printer.startListEntry();
    printer.endListEntry();
    printer.endList();
    printer.startList("none");
    printer.endList();
    printer.end();
}

TEST(JsonWriter, WritesCompactDocuments) {
    std::string expected =
        "{\"vniInDottedNotation\":false,\"empty\":{},\"vnis\":["
        "{\"vni\":-10,\"macAddr\":\"02:00:00:00:00:01\",\"timeLearned\":-9223372036854775808,"
        "\"vtepIpList\":[\"10.0.0.1\",\"10.0.0.2\"]},"
        "{\"vni\":-10,\"macAddr\":\"02:00:00:00:00:01\",\"timeLearned\":-9223372036854775808,"
        "\"vtepIpList\":[\"10.0.0.1\",\"10.0.0.2\"]},"
        "{}],\"none\":[]}\n";
    for (unsigned format : {0U, 2U, 4U, 4294967295U}) {
        EXPECT_EQ(printed(format, printSample), expected) << format;
    }
}

TEST(JsonWriter, WritesIndentedDocuments) {
    EXPECT_EQ(printed(indentedFormat, printSample), R"({
  "vniInDottedNotation": false,
  "empty": {},
  "vnis": [
    {
      "vni": -10,
      "macAddr": "02:00:00:00:00:01",
      "timeLearned": -9223372036854775808,
      "vtepIpList": [
        "10.0.0.1",
        "10.0.0.2"
      ]
    },
    {
      "vni": -10,
      "macAddr": "02:00:00:00:00:01",
      "timeLearned": -9223372036854775808,
      "vtepIpList": [
        "10.0.0.1",
        "10.0.0.2"
      ]
    },
    {}
  ],
  "none": []
}
)");
}

TEST(JsonWriter, WritesAnEmptyDocument) {
    for (unsigned format : {compactFormat, indentedFormat}) {
        EXPECT_EQ(printed(format,
                          [](Printer & printer) {
                              printer.start();
                              printer.end();
                          }),
                  "{}\n");
    }
}

TEST(JsonWriter, WritesSeveralDocumentsOneAfterTheOther) {
    EXPECT_EQ(printed(compactFormat,
                      [](Printer & printer) {
                          for (char const * key : {"a", ""}) {
                              printer.start();
                              printer.startDict(key);
                              printer.endDict();
                              printer.end();
                          }
                      }),
              "{\"a\":{}}\n{\"\":{}}\n");
}

TEST(JsonWriter, EndClosesEverythingThatIsOpen) {
    EXPECT_EQ(printed(compactFormat,
                      [](Printer & printer) {
                          printer.start();
                          printer.startDict("d");
                          printer.startList("l");
                          printer.startListEntry();
                          printer.startList("m");
                          printer.end();
                      }),
              "{\"d\":{\"l\":[{\"m\":[]}]}}\n");
}

TEST(JsonWriter, WritesBareElementsOfEveryKind) {
    EXPECT_EQ(printed(compactFormat,
                      [](Printer & printer) {
                          Attr32Info number(printer, "");
                          BoolAttrInfo flag(printer, "");
                          StringAttrInfo text(printer, "");
                          number.setValue(1);
                          flag.setValue(true);
                          text.setValue("x");
                          printer.start();
                          printer.startList("l");
                          printer.addAttributesJson(3, number.getArg(), flag.getArg(),
                                                    text.getArg());
                          printer.startListEntry();
                          printer.endListEntry();
                          printer.addAttributesJson(0);
                          printer.addAttributesJson(1, number.getArg());
                          printer.end();
                      }),
              "{\"l\":[1,true,\"x\",{},1]}\n");
}

TEST(JsonWriter, WritesAnyNumberOfAttributesInOneCall) {
    auto const print = [](Printer & printer) {
        Attr32Info number(printer, "number");
        number.setValue(7);
        auto const & arg = number.getArg();
        printer.start();
        printer.addAttributesJson(30, arg, arg, arg, arg, arg, arg, arg, arg, arg, arg, arg, arg,
                                  arg, arg, arg, arg, arg, arg, arg, arg, arg, arg, arg, arg, arg,
                                  arg, arg, arg, arg, arg);
        printer.end();
    };
    std::string expected = "{\"number\":7";
    for (int further = 1; further < 30; ++further) {
        expected += ",\"number\":7";
    }
    EXPECT_EQ(printed(2, print), expected + "}\n");
}

TEST(JsonWriter, IndentsEveryLevel) {
    constexpr std::size_t depth = 40;
    auto const print = [](Printer & printer) {
        Attr32Info number(printer, "n");
        number.setValue(7);
        printer.start();
        for (std::size_t level = 1; level < depth; ++level) {
            printer.startDict("d");
        }
        printer.addAttributesJson(2, number.getArg(), number.getArg());
        printer.end();
    };
    std::string expected = "{";
    for (std::size_t level = 1; level < depth; ++level) {
        expected += "\n" + std::string(2 * level, ' ') + "\"d\": {";
    }
    expected += "\n" + std::string(2 * depth, ' ') + "\"n\": 7,";
    expected += "\n" + std::string(2 * depth, ' ') + "\"n\": 7";
    for (std::size_t level = depth; level-- > 0;) {
        expected += "\n" + std::string(2 * level, ' ') + "}";
    }
    EXPECT_EQ(printed(3, print), expected + "\n");
}

TEST(JsonWriter, WritesTenMegabytes) {
    constexpr int entries = 100'000;
    for (unsigned format : {compactFormat, indentedFormat}) {
        std::string document = printed(format, [](Printer & printer) {
            StringAttrInfo mac(printer, "macAddr");
            Attr32Info moves(printer, "moveCount");
            mac.setValue("02:00:00:00:00:01 with a name that is long enough to go to the heap, as "
                         "only few of them are");
            printer.start();
            printer.startList("unicastHostTable");
            for (int entry = 0; entry < entries; ++entry) {
                printer.startListEntry();
                moves.setValue(entry);
                printer.addAttributesJson(2, mac.getArg(), moves.getArg());
                printer.endListEntry();
            }
            printer.end();
        });
        EXPECT_GT(document.size(), 10'000'000U);
        Json table = readJson(document).members.at(0).second;
        ASSERT_EQ(table.members.size(), static_cast<std::size_t>(entries));
        for (int entry = 0; entry < entries; ++entry) {
            Json const & read = table.members[static_cast<std::size_t>(entry)].second;
            ASSERT_EQ(read.members.at(1).second.text, std::to_string(entry));
        }
    }
}

/// Makes a call that must be refused after `open`; the document must continue as if the
/// call had not been made.
template <class Open, class Call>
void expectRefused(Open open, Call call) {
    std::string without = printed(compactFormat, [&](Printer & printer) {
        printer.start();
        open(printer);
        printer.end();
    });
    std::string with = printed(compactFormat, [&](Printer & printer) {
        printer.start();
        open(printer);
        EXPECT_THROW(call(printer), std::logic_error);
        printer.end();
    });
    EXPECT_EQ(with, without);
}

TEST(JsonWriter, RefusesCallsThatDoNotFitTheOpenContainers) {
    auto nothing = [](Printer &) {};
    auto dictionary = [](Printer & printer) { printer.startDict("d"); };
    auto list = [](Printer & printer) { printer.startList("l"); };
    auto entry = [](Printer & printer) {
        printer.startList("l");
        printer.startListEntry();
    };

    auto start = [](Printer & printer) { printer.start(); };
    auto startDict = [](Printer & printer) { printer.startDict("k"); };
    auto endDict = [](Printer & printer) { printer.endDict(); };
    auto startList = [](Printer & printer) { printer.startList("k"); };
    auto endList = [](Printer & printer) { printer.endList(); };
    auto startListEntry = [](Printer & printer) { printer.startListEntry(); };
    auto endListEntry = [](Printer & printer) { printer.endListEntry(); };
    auto addKeyed = [](Printer & printer) {
        Attr32Info good(printer, "k");
        good.setValue(1);
        Attr32Info bare(printer, "");
        bare.setValue(1);
        printer.addAttributesJson(2, good.getArg(), bare.getArg());
    };

    expectRefused(nothing, start);
    expectRefused(nothing, endDict);
    expectRefused(nothing, endList);
    expectRefused(nothing, startListEntry);
    expectRefused(nothing, endListEntry);
    expectRefused(nothing, addKeyed);

    expectRefused(dictionary, start);
    expectRefused(dictionary, endList);
    expectRefused(dictionary, startListEntry);
    expectRefused(dictionary, endListEntry);
    expectRefused(dictionary, addKeyed);

    expectRefused(list, startList);
    expectRefused(list, endListEntry);
    expectRefused(list, addKeyed);
    // A list of the document itself cannot be left open.
    expectRefused(list, startDict);
    expectRefused(list, endDict);

    expectRefused(entry, endDict);
    expectRefused(entry, endList);
    expectRefused(entry, startListEntry);
    expectRefused(entry, addKeyed);
}

TEST(JsonWriter, RefusesEverythingOutsideADocument) {
    File file;
    Printer printer(file.fd(), compactFormat, true, false, true, 0);
    Attr32Info number(printer, "k");
    number.setValue(1);
    for (int round = 0; round < 2; ++round) {
        EXPECT_THROW(printer.end(), std::logic_error);
        EXPECT_THROW(printer.startDict("k"), std::logic_error);
        EXPECT_THROW(printer.endDict(), std::logic_error);
        EXPECT_THROW(printer.startList("k"), std::logic_error);
        EXPECT_THROW(printer.endList(), std::logic_error);
        EXPECT_THROW(printer.startListEntry(), std::logic_error);
        EXPECT_THROW(printer.endListEntry(), std::logic_error);
        EXPECT_THROW(printer.addAttributesJson(1, number.getArg()), std::logic_error);
        if (round == 0) {
            printer.start();
            printer.end();
        }
    }
    printer.flush();
    EXPECT_EQ(file.content(), "{}\n");
}

} // namespace
} // namespace outfmt::test
