#include "outfmt/Printer.h"

#include "Descriptors.h"
#include "outfmt/AttrInfo.h"
#include "outfmt/WriteError.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <type_traits>

namespace outfmt::test {
namespace {

static_assert(std::is_base_of_v<Renderer, Printer>);
static_assert(std::is_constructible_v<Printer, int, unsigned, bool, bool, bool, unsigned>);
static_assert(!std::is_copy_constructible_v<Printer> && !std::is_move_constructible_v<Printer>);

/// One function for both outputs, as in the router listings.
void printBoth(Printer & printer) {
    StringAttrInfo id(printer, "switchId");
    printer.start();
    printer.addFrills("%-10s|\n", "Switch");
    printer.startDict("switches");
    for (char const * name : {"leaf1", "leaf2"}) {
        printer.startDict(name);
        id.setValue(name);
        printer.addAttributesJson(1, id.getArg());
        printer.addFrillsUpTo(8, "%-10s|\n", name);
        printer.addFrills("\n");
        printer.endDict();
    }
    printer.endDict();
    printer.end();
}

TEST(Printer, PrintsTextOnlyInFormatOne) {
    EXPECT_EQ(printed(textFormat, printBoth), "Switch    |\nleaf1   \nleaf2   \n");
}

TEST(Printer, PrintsJsonOnlyInEveryOtherFormat) {
    for (unsigned format : {0U, 2U, 4U, 77U}) {
        EXPECT_EQ(printed(format, printBoth), "{\"switches\":{\"leaf1\":{\"switchId\":\"leaf1\"},"
                                              "\"leaf2\":{\"switchId\":\"leaf2\"}}}\n");
    }
    EXPECT_EQ(printed(indentedFormat, printBoth), R"({
  "switches": {
    "leaf1": {
      "switchId": "leaf1"
    },
    "leaf2": {
      "switchId": "leaf2"
    }
  }
}
)");
}

TEST(Printer, HasModeOneForTextAndTwoForJson) {
    File file;
    EXPECT_EQ(Printer(file.fd(), 1, true, false, true, 0).mode(), 1U);
    for (unsigned format : {0U, 2U, 3U, 99U}) {
        EXPECT_EQ(Printer(file.fd(), format, true, false, true, 0).mode(), 2U);
    }
}

TEST(Printer, IgnoresTheReservedArguments) {
    File file;
    Printer printer(file.fd(), 1, false, true, false, 17);
    printer.addFrills("text\n");
    printer.flush();
    EXPECT_EQ(file.content(), "text\n");
}

TEST(Printer, DoesNotTrackTheStructureInTextMode) {
    EXPECT_EQ(printed(textFormat,
                      [](Printer & printer) {
                          printer.endDict();
                          printer.endListEntry();
                          printer.startDict("x");
                          printer.startList("y");
                          printer.startList("z");
                          printer.end();
                          printer.end();
                      }),
              "");
}

TEST(Printer, RefusesAWrongAttributeCount) {
    for (unsigned format : {textFormat, compactFormat}) {
        printed(format, [](Printer & printer) {
            Attr32Info number(printer, "n");
            number.setValue(1);
            printer.start();
            EXPECT_THROW(printer.addAttributesJson(2, number.getArg()), std::logic_error);
            EXPECT_THROW(printer.addAttributesJson(0, number.getArg()), std::logic_error);
            printer.end();
        });
    }
}

TEST(Printer, RefusesAnAttributeOfAnotherMode) {
    for (unsigned format : {textFormat, compactFormat}) {
        printed(format, [](Printer & printer) {
            BoolAttrInfo flag(3 - printer.mode(), "f");
            flag.setValue(true);
            printer.start();
            EXPECT_THROW(printer.addAttributesJson(1, flag.getArg()), std::logic_error);
            printer.end();
        });
    }
}

TEST(Printer, AddsNoAttributesForACountOfZero) {
    EXPECT_EQ(printed(compactFormat,
                      [](Printer & printer) {
                          printer.start();
                          printer.addAttributesJson(0);
                          printer.end();
                      }),
              "{}\n");
}

template <class Call>
void expectInterrupted(unsigned format, Call call) {
    CleanInterruptFlag clean;
    File file;
    Printer printer(file.fd(), format, true, false, true, 0);
    requestInterrupt();
    EXPECT_THROW(call(printer), SigIntException);
}

TEST(Printer, ChecksForTheInterruptInEveryCall) {
    for (unsigned format : {textFormat, compactFormat, indentedFormat}) {
        expectInterrupted(format, [](Printer & printer) { printer.addFrills("text"); });
        expectInterrupted(format, [](Printer & printer) { printer.addFrillsUpTo(9, "text"); });
        expectInterrupted(format, [](Printer & printer) { printer.flush(); });
        expectInterrupted(format, [](Printer & printer) { printer.start(); });
        expectInterrupted(format, [](Printer & printer) { printer.end(); });
        expectInterrupted(format, [](Printer & printer) { printer.startDict("k"); });
        expectInterrupted(format, [](Printer & printer) { printer.endDict(); });
        expectInterrupted(format, [](Printer & printer) { printer.startList("k"); });
        expectInterrupted(format, [](Printer & printer) { printer.endList(); });
        expectInterrupted(format, [](Printer & printer) { printer.startListEntry(); });
        expectInterrupted(format, [](Printer & printer) { printer.endListEntry(); });
        expectInterrupted(format, [](Printer & printer) { printer.addAttributesJson(0); });
    }
}

TEST(Printer, AnInterruptedListingEndsWithAWholeLine) {
    CleanInterruptFlag clean;
    File file;
    {
        Printer printer(file.fd(), textFormat, true, false, true, 0);
        for (int row = 0; row < 10'000; ++row) {
            printer.addFrills("%-17s %-11s", "leaf1", "10");
            printer.addFrills(" %-15s %5d\n", "10.0.0.1", row);
        }
        printer.addFrills("half a ");
        requestInterrupt();
        EXPECT_THROW(printer.addFrills("row\n"), SigIntException);
    }
    std::string content = file.content();
    EXPECT_TRUE(content.ends_with('\n'));
    EXPECT_GT(content.size(), std::size_t{10'000} * 52 - 2 * OutputBuffer::capacity);
    EXPECT_EQ(content.size() % 52, 0U); // 51 columns and the line end
}

TEST(Printer, PrintsTenMegabytesThroughAPipe) {
    Pipe pipe;
    std::string received;
    std::thread reading([&] { received = readAll(pipe.reader.get()); });
    std::string expected;
    Printer printer(pipe.writer.get(), textFormat, true, false, true, 0);
    for (int row = 0; expected.size() < 10'000'000; ++row) {
        printer.addFrills("%-17s %9d\n", "leaf1", row);
        std::string number = std::to_string(row);
        expected += "leaf1             " + std::string(9 - number.size(), ' ') + number + "\n";
    }
    printer.flush();
    pipe.writer.close();
    reading.join();
    EXPECT_TRUE(received == expected);
}

TEST(Printer, WritesNothingIfItIsDestroyedWithoutAFlush) {
    File file;
    { Printer(file.fd(), textFormat, true, false, true, 0).addFrills("text\n"); }
    EXPECT_EQ(file.content(), "");
}

TEST(Printer, ReportsAFullDiskOnFlushAndNeverFromItsDestructor) {
    Fd full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    for (unsigned format : {textFormat, compactFormat}) {
        Printer printer(full.get(), format, true, false, true, 0);
        printer.addFrills("text\n");
        printer.start();
        printer.end();
        EXPECT_THROW(printer.flush(), WriteError);
    }
}

TEST(Printer, ReportsAClosedPipeFromTheCallThatWrites) {
    SignalAction ignored(SIGPIPE, SIG_IGN);
    Pipe pipe;
    pipe.reader.close();
    Printer printer(pipe.writer.get(), textFormat, true, false, true, 0);
    auto printForever = [&] {
        for (;;) {
            printer.addFrills("%s\n", "a row");
        }
    };
    EXPECT_THROW(printForever(), WriteError);
}

} // namespace
} // namespace outfmt::test
