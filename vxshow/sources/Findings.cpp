#include "vxshow/sources/Findings.h"

#include <utility>

namespace vxshow::sources {

namespace {

void appendTo(std::string & line, std::string const & text) {
    line.append(line.empty() ? "" : "; ").append(text);
}

/// The words for one entry and for several.
struct Words {
    char const * one;
    char const * several;
};

void appendTo(std::string & line, Noticed const & noticed, Subjects subjects, Words words) {
    auto const count = noticed.count(subjects);
    if (count == 0) {
        return;
    }
    bool const single = count == 1;
    appendTo(line, std::to_string(count));
    line.append(" ").append(single ? words.one : words.several);
    line.append(single ? ": " : ", the first: ").append(noticed.first(subjects));
}

} // namespace

void Noticed::add(Subjects about, std::string what) {
    auto & some = some_[about];
    if (some.count == 0 || what < some.first) {
        some.first = std::move(what);
    }
    ++some.count;
}

std::size_t Noticed::count(Subjects subjects) const noexcept {
    std::size_t count = 0;
    for (auto const & [about, some] : some_) {
        count += about.intersects(subjects) ? some.count : 0;
    }
    return count;
}

std::string Noticed::first(Subjects subjects) const {
    std::string const * least = nullptr;
    for (auto const & [about, some] : some_) {
        if (about.intersects(subjects) && (!least || some.first < *least)) {
            least = &some.first;
        }
    }
    return least ? *least : "";
}

std::optional<std::string> Findings::warning(Subjects subjects) const {
    std::string line;
    for (Remark const & remark : remarks) {
        if (remark.about.intersects(subjects)) {
            appendTo(line, remark.text);
        }
    }
    appendTo(line, leftOut, subjects, {"entry left out", "entries left out"});
    appendTo(line, ipv6Vteps, subjects,
             {"entry left out, its VTEP is IPv6", "entries left out, their VTEP is IPv6"});
    appendTo(line, unplaced, subjects,
             {"local entry at a VTEP of no switch", "local entries at a VTEP of no switch"});
    appendTo(line, disputed, subjects,
             {"IP address with several MAC addresses", "IP addresses with several MAC addresses"});
    return line.empty() ? std::nullopt : std::optional(std::move(line));
}

} // namespace vxshow::sources
