#include "vxshow/terminal/Watch.h"

#include "vxshow/system/DescriptorIo.h"
#include "vxshow/system/TimeOfDay.h"
#include "vxshow/terminal/Keys.h"
#include "vxshow/terminal/Say.h"
#include "vxshow/terminal/Screen.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <string_view>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

using Clock = std::chrono::steady_clock;

void writeToStandardOutput(std::string_view text) {
    if (auto const error = system::writeAll(STDOUT_FILENO, text)) {
        fail(ExitStatus::failed, "standard output: " + error.message());
    }
}

class Watching {
public:
    Watching(std::string const & title, std::chrono::seconds interval, ReadView const & read)
        : heading_("vxshow " + title + ", every " + std::to_string(interval.count()) + " s"),
          interval_(interval), read_(read), drawn_(::isatty(STDOUT_FILENO) == 1) {}

    [[noreturn]] void run() {
        for (;;) {
            readAgain();
            show();
            auto const end = Clock::now() + interval_;
            for (auto left = interval(end); left.count() > 0; left = interval(end)) {
                obey(keys_.wait(left));
            }
        }
    }

private:
    static std::chrono::milliseconds interval(Clock::time_point end) {
        return std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    }

    void readAgain() {
        try {
            view_ = read_([this] { obey(keys_.wait({})); });
            time_ = system::timeOfDay();
            failure_.clear();
        } catch (std::exception const & error) {
            failure_ = error.what();
            view_.status = ExitStatus::failed;
        }
    }

    /// The remarks of the view, or why there is no newer one.
    std::vector<std::string> remarks() const {
        if (failure_.empty()) {
            return view_.remarks;
        }
        return {time_ ? std::string(staleWords) + *time_ + ": " + failure_ : failure_};
    }

    void show() {
        if (drawn_) {
            return draw();
        }
        if (time_) {
            writeToStandardOutput(view_.head ? view_.head(failure_) : "");
            writeToStandardOutput(view_.text.text());
        }
        for (std::string const & remark : remarks()) {
            say(remark);
        }
    }

    void draw() {
        auto const title = heading_ + (time_ ? ", at " + *time_ : ": nothing read yet");
        auto drawing = drawScreen(title, remarks(), view_.text.text(), screenSize(STDOUT_FILENO),
                                  view_.tables, start_, view_.coloring);
        start_ = std::min(start_, drawing.lastStart);
        lastStart_ = drawing.lastStart;
        page_ = drawing.page;
        writeToStandardOutput(drawing.text);
    }

    void obey(Key key) {
        if (key == Key::none) {
            return;
        }
        if (key == Key::quit) {
            exitNow(view_.status);
        }
        start_ = startAfter(key);
        if (drawn_) {
            draw();
        }
    }

    std::size_t startAfter(Key key) const {
        auto const back = [&](std::size_t lines) { return start_ - std::min(lines, start_); };
        auto const on = [&](std::size_t lines) { return std::min(start_ + lines, lastStart_); };
        switch (key) {
        case Key::lineUp:
            return back(1);
        case Key::lineDown:
            return on(1);
        case Key::pageUp:
            return back(page_);
        case Key::pageDown:
            return on(page_);
        case Key::top:
            return 0;
        case Key::bottom:
            return lastStart_;
        default:
            return start_;
        }
    }

    std::string heading_;
    std::chrono::seconds interval_;
    ReadView const & read_;
    bool drawn_; ///< on a terminal
    Keys keys_;
    View view_{system::FileBytes::copyOf("")};
    std::optional<std::string> time_; ///< of the view; nullopt: nothing was read yet
    std::string failure_;             ///< why the state could not be read again; empty: it could
    std::size_t start_ = 0;           ///< the first line of the listing that is shown
    std::size_t lastStart_ = 0;
    std::size_t page_ = 1;
};

} // namespace

void watch(std::string const & title, std::chrono::seconds interval, ReadView const & read) {
    try {
        Watching(title, interval, read).run();
    } catch (std::exception const & error) {
        fail(ExitStatus::failed, error.what());
    }
}

} // namespace vxshow::terminal
