#pragma once

#include <cstddef>
#include <string_view>

namespace vxshow::sources {

/// How many facts a source can come to if its operator sets no limit.
inline constexpr std::size_t defaultMaxFacts = 10'000'000;

/// How many facts a router on a switch counts as: its name is kept for each switch, and can be of
/// any length, so that 64 bytes of it count as one more.
inline std::size_t factsOfRouter(std::string_view name) noexcept {
    return 1 + name.size() / 64;
}

/// Counts the facts that an answer comes to, before they are made, and refuses more than allowed.
///
/// A short answer can come to very many: each entry at a tunnel address is a fact for each switch
/// that has the address, and each flood list one for each member of its set of locators. 4,000
/// switches that share an address, and as many MAC addresses behind it, are 1 MB of answer, but
/// 16 million facts. A deadline alone does not bound the memory that they take.
///
/// A fact is a MAC address behind a VTEP, a member of a flood list, the MAC address of an IP
/// address, a VNI that a side knows, a port of a router, a nexthop of a route (or a route without
/// one), or a router that runs on a switch (see `factsOfRouter`). Repetitions count each time.
class FactBudget {
public:
    /// Allows `most` facts, at least 1.
    explicit FactBudget(std::size_t most) noexcept : most_(most), left_(most) {}

    /// To be called before `count` facts are made. Throws `TooManyFacts` if these are more than
    /// are left.
    void spend(std::size_t count = 1) {
        if (count > left_) [[unlikely]] {
            refuse();
        }
        left_ -= count;
    }

    /// To be called after `count` facts were dropped, which had been counted.
    void giveBack(std::size_t count) noexcept { left_ += count; }

private:
    [[noreturn]] void refuse() const;

    std::size_t most_;
    std::size_t left_;
};

} // namespace vxshow::sources
