#include "outfmt/Printer.h"

#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Input.h"
#include "fuzz/harness/Scratch.h"
#include "outfmt/AttrInfo.h"
#include "tests/unit/platform/outfmt/JsonReader.h"

#include <array>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <vector>

/// Any sequence of calls of the printer: each JSON call is refused with std::logic_error, or the
/// document that comes out can be read by another reader; text is as the C library prints it.
namespace fuzz {

namespace {

constexpr unsigned longestText = 150; // longer than what an attribute keeps without the heap

void attribute(outfmt::Printer & printer, Input & input) {
    auto const kind = input.below(5);
    auto const key = input.text(40);
    switch (kind) {
    case 0: {
        outfmt::Attr32Info info(printer, key);
        info.setValue(static_cast<std::int32_t>(input.number()));
        return printer.addAttributesJson(1, info.getArg());
    }
    case 1: {
        outfmt::Attr64Info info(printer, key);
        auto const high = static_cast<std::uint64_t>(input.number()) << 32;
        info.setValue(static_cast<std::int64_t>(high | input.number()));
        return printer.addAttributesJson(1, info.getArg());
    }
    case 2: {
        outfmt::BoolAttrInfo info(printer, key);
        info.setValue(input.flag());
        return printer.addAttributesJson(1, info.getArg());
    }
    case 3: {
        outfmt::StringAttrInfo info(printer, key);
        info.setValue(input.text(longestText));
        printer.addAttributesJson(1, info.getArg());
        // Another value in the same info, longer or shorter.
        info.setValue(input.text(longestText));
        return printer.addAttributesJson(1, info.getArg());
    }
    default: {
        outfmt::StringAttrInfo text(printer, key);
        outfmt::Attr32Info number(printer, input.text(40));
        text.setValue(input.text(longestText));
        number.setValue(static_cast<std::int32_t>(input.number()));
        printer.addAttributesJson(2, text.getArg(), number.getArg());
    }
    }
}

/// Returns whether a document ended.
bool call(outfmt::Printer & printer, Input & input) {
    switch (input.below(12)) {
    case 0:
        printer.start();
        break;
    case 1:
        printer.end();
        return true;
    case 2:
        printer.startDict(input.text(40));
        break;
    case 3:
        printer.endDict();
        break;
    case 4:
        printer.startList(input.text(40));
        break;
    case 5:
        printer.endList();
        break;
    case 6:
        printer.startListEntry();
        break;
    case 7:
        printer.endListEntry();
        break;
    default:
        attribute(printer, input);
    }
    return false;
}

std::string readAndClear(Scratch & file) {
    auto content = file.content();
    file.clear();
    return content;
}

void jsonCalls(Input & input, Scratch & file) {
    outfmt::Printer printer(file.descriptor(), input.flag() ? 2 : 3, true, false, true, 0);
    while (!input.empty()) {
        try {
            if (call(printer, input)) {
                printer.flush();
                outfmt::test::readJson(readAndClear(file));
            }
        } catch (std::logic_error const &) {
            // A call that does not fit what is open. It must have written nothing.
        }
    }
    try {
        printer.end();
        printer.flush();
        outfmt::test::readJson(readAndClear(file));
    } catch (std::logic_error const &) {
        printer.flush();
        check(file.content().empty(), "text was printed outside of a document");
    }
}

/// The lines are printed by the printer to `file`, and by the C library to `expected`. A text has
/// no zero byte, with which the C library would end it.
void textCalls(Input & input, Scratch & file) {
    outfmt::Printer printer(file.descriptor(), 1, true, false, true, 0);
    std::string expected;
    std::array<char, 600> line;
    while (!input.empty()) {
        auto const given = input.text(longestText);
        std::string const text(given.substr(0, given.find('\0')));
        auto const number = static_cast<std::int32_t>(input.number());
        auto const count = input.number();
        auto const letter = static_cast<char>(input.byte() | 1);
        // For a cut line. snprintf takes one byte less than it is given.
        std::size_t const most = input.flag() ? input.byte() : line.size() - 1;
        int printed = 0;
        if (input.flag()) {
            printed = std::snprintf(line.data(), most + 1, "%-17s %.9s|%12d%c%%\n", text.c_str(),
                                    text.c_str(), number, letter);
            printer.addFrillsUpTo(most, "%-17s %.9s|%12d%c%%\n", text, text, number, letter);
        } else {
            printed = std::snprintf(line.data(), most + 1, "%60s%-10u|%-3d%5.2s", text.c_str(),
                                    count, number, text.c_str());
            printer.addFrillsUpTo(most, "%60s%-10u|%-3d%5.2s", text, count, number, text);
        }
        expected.append(line.data(), std::min(static_cast<std::size_t>(printed), most));
        printer.startDict("not in text");
    }
    printer.flush();
    check(file.content() == expected, "a text differs from that of the C library");
}

} // namespace

void printer(std::string_view bytes) {
    static Scratch file;
    file.clear();
    Input input(bytes);
    if (input.below(4) == 0) {
        textCalls(input, file);
    } else {
        jsonCalls(input, file);
    }
}

} // namespace fuzz
