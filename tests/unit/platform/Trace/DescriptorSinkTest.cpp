#include "Trace/DescriptorSink.h"

#include "Captured.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace Trace::test {
namespace {

/// The sink's output for these records.
template <class... Records>
std::string written(Records const &... records) {
    int fd = ::memfd_create("trace-test", MFD_CLOEXEC);
    Sink sink = descriptorSink(fd);
    (sink(records), ...);
    std::string content(65536, '\0');
    ssize_t size = ::pread(fd, content.data(), content.size(), 0);
    ::close(fd);
    content.resize(static_cast<std::size_t>(size));
    return content;
}

Record recordOf(std::string_view text) {
    return {"test", 8, "mac/Received.cpp", 42, "copySwitch", text};
}

TEST(DescriptorSink, WritesOneLinePerRecord) {
    EXPECT_EQ(written(recordOf("initialize()"), Record{"test", 1, "plain.cpp", 7, "main", ""},
                      Record{"test", 0, "a/b/c.cpp", 100000, "f", "x: y"}),
              "8 Received.cpp:42 copySwitch: initialize()\n"
              "1 plain.cpp:7 main: \n"
              "0 c.cpp:100000 f: x: y\n");
}

TEST(DescriptorSink, MakesControlCharactersHarmless) {
    auto shown = [](std::string_view text) {
        std::string line = written(recordOf(text));
        std::string before = "8 Received.cpp:42 copySwitch: ";
        EXPECT_TRUE(line.starts_with(before) && line.ends_with('\n')) << line;
        return line.substr(before.size(), line.size() - before.size() - 1);
    };
    EXPECT_EQ(shown("two\nlines\r\t"), R"(two\x0alines\x0d\x09)");
    EXPECT_EQ(shown(std::string_view("a\0b", 3)), R"(a\x00b)");
    EXPECT_EQ(shown("\x1b[31mred\x7f"), R"(\x1b[31mred\x7f)");
    EXPECT_EQ(shown("\xc2\x9b"
                    "31m \xc2\x80 \xc2\xa0 \x9b \xff \xe2\x82"),
              R"(\xc2\x9b31m \xc2\x80 )"
              "\xc2\xa0"
              R"( \x9b \xff \xe2\x82)");
    EXPECT_EQ(shown("Z\xc3\xbcrich \xe2\x82\xac ~"), "Z\xc3\xbcrich \xe2\x82\xac ~");
}

TEST(DescriptorSink, DropsWhatCannotBeWritten) {
    EXPECT_NO_THROW(descriptorSink(-1)(recordOf("text")));
    int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    EXPECT_NO_THROW(descriptorSink(full)(recordOf("text")));
    ::close(full);
}

TEST(DescriptorSink, IsASinkForHandles) {
    LevelsOff clean;
    int fd = ::memfd_create("trace-test", MFD_CLOEXEC);
    setSink(descriptorSink(fd));
    Handle handle("test");
    handle.enableUpTo(1);
    handle.at(1) << "No hostTable created for "
                 << "EVPN";
    setSink(nullptr);
    char content[256] = {};
    ASSERT_GT(::pread(fd, content, sizeof content - 1, 0), 0);
    ::close(fd);
    std::string_view line = content;
    EXPECT_TRUE(line.starts_with("1 DescriptorSinkTest.cpp:")) << line;
    EXPECT_TRUE(line.ends_with(" TestBody: No hostTable created for EVPN\n")) << line;
}

} // namespace
} // namespace Trace::test
