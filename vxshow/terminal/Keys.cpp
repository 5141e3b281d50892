#include "vxshow/terminal/Keys.h"

#include "vxshow/system/RawTerminal.h"

#include <algorithm>
#include <array>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

struct Typed {
    std::string_view text;
    Key key;
};

constexpr std::array<Typed, 18> known{{
    {"q", Key::quit},
    {"Q", Key::quit},
    {"k", Key::lineUp},
    {"j", Key::lineDown},
    {"\x1b[A", Key::lineUp},
    {"\x1b[B", Key::lineDown},
    {"\x1bOA", Key::lineUp},
    {"\x1bOB", Key::lineDown},
    {"\x1b[5~", Key::pageUp},
    {"\x1b[6~", Key::pageDown},
    {"b", Key::pageUp},
    {" ", Key::pageDown},
    {"\x1b[H", Key::top},
    {"\x1b[F", Key::bottom},
    {"\x1b[1~", Key::top},
    {"\x1b[4~", Key::bottom},
    {"g", Key::top},
    {"G", Key::bottom},
}};

/// The length of the unknown key at the start of `typed`: a control sequence ends with a letter or
/// a tilde.
std::size_t lengthOfUnknown(std::string_view typed) {
    if (typed.size() < 2 || typed[0] != '\x1b' || (typed[1] != '[' && typed[1] != 'O')) {
        return 1;
    }
    auto const end =
        std::find_if(typed.begin() + 2, typed.end(), [](char c) { return c >= '@' && c <= '~'; });
    return static_cast<std::size_t>(end - typed.begin()) + (end == typed.end() ? 0 : 1);
}

} // namespace

Key takeKey(std::string_view & typed) {
    for (Typed const & one : known) {
        if (typed.starts_with(one.text)) {
            typed.remove_prefix(one.text.size());
            return one.key;
        }
    }
    typed.remove_prefix(typed.empty() ? 0 : lengthOfUnknown(typed));
    return Key::none;
}

Keys::Keys() : arrive_(system::RawTerminal::start()) {}

Keys::~Keys() {
    system::RawTerminal::restore();
}

Key Keys::wait(std::chrono::milliseconds time) {
    auto const end = std::chrono::steady_clock::now() + time;
    for (;;) {
        std::string_view rest = typed_;
        while (!rest.empty()) {
            if (auto const key = takeKey(rest); key != Key::none) {
                typed_ = rest;
                return key;
            }
        }
        typed_.clear();
        auto const left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() < 0) {
            return Key::none;
        }
        if (!arrive_) {
            std::this_thread::sleep_for(left);
            return Key::none;
        }
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (::poll(&input, 1, static_cast<int>(left.count())) > 0) {
            std::array<char, 64> some;
            auto const size = ::read(STDIN_FILENO, some.data(), some.size());
            // Of a terminal that has hung up nothing more will come.
            arrive_ = size > 0;
            typed_.assign(some.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
        } else if (left.count() == 0) {
            return Key::none;
        }
    }
}

} // namespace vxshow::terminal
