#include "vxshow/terminal/Watch.h"

#include "vxshow/system/DescriptorIo.h"
#include "vxshow/system/TimeOfDay.h"
#include "vxshow/terminal/Say.h"
#include "vxshow/terminal/Screen.h"

#include <exception>
#include <string_view>
#include <thread>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

void writeToStandardOutput(std::string_view text) {
    if (auto const error = system::writeAll(STDOUT_FILENO, text)) {
        fail(ExitStatus::failed, "standard output: " + error.message());
    }
}

void show(std::string const & title, View const & view) {
    if (::isatty(STDOUT_FILENO) == 1) {
        return writeToStandardOutput(
            drawScreen(title, view.remarks, view.text.text(), screenSize(STDOUT_FILENO)));
    }
    writeToStandardOutput(view.text.text());
    for (std::string const & remark : view.remarks) {
        say(remark);
    }
}

[[noreturn]] void showRepeatedly(std::string const & title, std::chrono::seconds interval,
                                 std::function<View()> const & read) {
    auto view = read();
    auto time = system::timeOfDay();
    auto const heading =
        "vxshow " + title + ", every " + std::to_string(interval.count()) + " s, at ";
    for (;;) {
        show(heading + time, view);
        std::this_thread::sleep_for(interval);
        try {
            view = read();
            time = system::timeOfDay();
        } catch (std::exception const & error) {
            view.remarks = {error.what(), "shown as it was at " + time};
        }
    }
}

} // namespace

void watch(std::string const & title, std::chrono::seconds interval,
           std::function<View()> const & read) {
    try {
        showRepeatedly(title, interval, read);
    } catch (std::exception const & error) {
        fail(ExitStatus::failed, error.what());
    }
}

} // namespace vxshow::terminal
