#include "vxshow/terminal/TerminalOutput.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <pthread.h>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace vxshow::test {

using namespace terminal;

namespace {

/// What arrives at the terminal when these pieces are written.
std::string passed(std::vector<std::string_view> const & pieces) {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    {
        TerminalOutput output(ends[1]);
        for (std::string_view const piece : pieces) {
            EXPECT_EQ(write(output.descriptor(), piece.data(), piece.size()),
                      static_cast<ssize_t>(piece.size()));
        }
        output.finish();
    }
    close(ends[1]);
    std::string text;
    std::array<char, 4096> some;
    for (ssize_t got = 1; got > 0; text.append(some.data(), static_cast<std::size_t>(got))) {
        got = read(ends[0], some.data(), some.size());
    }
    close(ends[0]);
    return text;
}

} // namespace

TEST(TerminalOutput, TextPassesUnchanged) {
    EXPECT_EQ(passed({"VNI  MAC\n", "\u00e4\t\u2014\n"}), "VNI  MAC\n\u00e4\t\u2014\n");
}

TEST(TerminalOutput, ControlCharactersBecomeQuestionMarks) {
    EXPECT_EQ(passed({"\x1b[2J\r\x07\x7f\n", std::string_view("\0", 1)}), "?[2J???\n?");
}

TEST(TerminalOutput, AC1ControlIsReplacedEvenIfItIsSplit) {
    EXPECT_EQ(passed({"a\xc2\x9b"
                      "b"}),
              "a?b");
    EXPECT_EQ(passed({"\xc2", "\x9b", "\xc2", "\xa9"}), "?\u00a9");
}

TEST(TerminalOutput, InvisibleCharactersBecomeQuestionMarks) {
    EXPECT_EQ(passed({"a\u202eb\u2066c\u200b\ufeff\n"}), "a?b?c??\n");
    EXPECT_EQ(passed({"\xe2\x80", "\xae\xe2", "\x80\xa6"}), "?\u2026");
}

TEST(TerminalOutput, AnIncompleteCharacterBecomesAQuestionMark) {
    EXPECT_EQ(passed({"a\xe2\x82 b\n"}), "a? b\n");
    EXPECT_EQ(passed({"a\xff\x80z\xf0\x9f"}), "a??z?");
}

TEST(TerminalOutput, LongOutputIsComplete) {
    std::vector<std::string_view> const pieces(100, "0123456789\n");
    EXPECT_EQ(passed(pieces).size(), 1100U);
}

TEST(TerminalOutput, ATerminalThatCannotBeWrittenIsAnError) {
    int const full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    TerminalOutput output(full);
    for (int count = 0; count < 100; ++count) {
        EXPECT_EQ(write(output.descriptor(), std::string(1000, 'x').data(), 1000), 1000);
    }
    EXPECT_THROW(output.finish(), std::system_error);
    close(full);
}

TEST(TerminalOutput, AThreadThatCannotBeStartedIsNamed) {
    pthread_attr_t usual;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    pthread_attr_t large = usual;
    pthread_attr_setstacksize(&large, std::size_t{1} << 60);
    ASSERT_EQ(pthread_setattr_default_np(&large), 0);
    std::string message;
    try {
        TerminalOutput const output(STDOUT_FILENO);
    } catch (std::system_error const & error) {
        message = error.what();
    }
    pthread_setattr_default_np(&usual);
    EXPECT_EQ(message, "cannot start a thread for the terminal: Resource temporarily unavailable");
}

} // namespace vxshow::test
