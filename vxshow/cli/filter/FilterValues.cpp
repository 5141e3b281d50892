#include "vxshow/cli/filter/FilterValues.h"

#include "Vex/Errors.h"
#include "vxshow/cli/filter/MacPrefix.h"
#include "vxshow/state/narrow/Prefixes.h"

#include <utility>

namespace vxshow::cli::filter {

namespace {

using state::narrow::Intervals;

[[noreturn]] void refuse(std::string_view text, std::string_view expected) {
    throw ValueError(Vex::quoted(text).append(": expected ").append(expected));
}

/// Reads one value with the type's own message.
template <class Value>
Value readOne(std::string_view text) {
    try {
        return Value::fromString(text);
    } catch (Vex::Error const & error) {
        throw ValueError(error.what());
    }
}

/// Calls `read` for each value of `texts`.
template <class Read>
void forEachValue(Texts const & texts, Read && read) {
    for (std::string const & text : texts) {
        for (std::string_view const value : splitAtCommas(text)) {
            read(value);
        }
    }
}

/// Puts the set into a filter: as its one value if there is only one.
template <class Filter, class Value>
Filter filterOf(std::vector<typename Intervals<Value>::Interval> intervals) {
    Intervals<Value> set(std::move(intervals));
    if (set.intervals().size() == 1 &&
        set.intervals().front().first == set.intervals().front().last) {
        return {set.intervals().front().first, {}};
    }
    return {{}, std::move(set)};
}

Intervals<Vxlan::Vni>::Interval readVniRange(std::string_view text) {
    auto const dash = text.find('-', 1);
    if (dash == std::string_view::npos) {
        auto const vni = readOne<Vxlan::Vni>(text);
        return {vni, vni};
    }
    auto const first = Vxlan::Vni::tryFromString(text.substr(0, dash));
    auto const last = Vxlan::Vni::tryFromString(text.substr(dash + 1));
    if (!first || !last) {
        refuse(text, "a range of VNIs from 0 to 16777215 such as 10-20");
    }
    if (*last < *first) {
        refuse(text, std::string("the lower VNI first, ") + last->stringValue() + "-" +
                         first->stringValue());
    }
    return {*first, *last};
}

bool isSubnet(std::string_view text) {
    return text.find('/') != std::string_view::npos;
}

constexpr char const * anIp = "an IPv4 or IPv6 address such as 10.0.0.1 or 2001:db8::1";
constexpr char const * aPrefix = "a prefix such as 10.1.0.0/16 or 2001:db8::/32";

Intervals<Nolt::IpGenAddr>::Interval readIpRange(std::string_view text) {
    if (text.empty()) {
        refuse(text, anIp);
    }
    if (!isSubnet(text)) {
        auto const address = readOne<Nolt::IpGenAddr>(text);
        return {address, address};
    }
    auto const prefix = readOne<Nolt::IpGenPrefix>(text);
    return {prefix.address(), state::narrow::lastAddress(prefix)};
}

} // namespace

std::vector<std::string_view> splitAtCommas(std::string_view text) {
    std::vector<std::string_view> parts;
    std::size_t from = 0;
    for (;;) {
        auto const comma = text.find(',', from);
        parts.push_back(text.substr(from, comma - from));
        if (comma == std::string_view::npos) {
            return parts;
        }
        from = comma + 1;
    }
}

VniFilter readVnis(Texts const & texts) {
    std::vector<Intervals<Vxlan::Vni>::Interval> ranges;
    forEachValue(texts, [&](std::string_view text) { ranges.push_back(readVniRange(text)); });
    return filterOf<VniFilter, Vxlan::Vni>(std::move(ranges));
}

std::optional<Nolt::EthAddr> readMac(std::string_view text) {
    auto const address = Nolt::EthAddr::tryFromString(text);
    return address ? address : readBareMac(text);
}

MacFilter readMacs(Texts const & texts) {
    std::vector<Intervals<Nolt::EthAddr>::Interval> ranges;
    bool every = false;
    forEachValue(texts, [&](std::string_view text) {
        if (isMacPrefix(text)) {
            ranges.push_back(readMacPrefix(text));
        } else {
            auto const bare = readBareMac(text);
            auto const address = bare ? *bare : readOne<Nolt::EthAddr>(text);
            every = every || address.isZero();
            ranges.push_back({address, address});
        }
    });
    if (every) {
        return {};
    }
    MacFilter filter = filterOf<MacFilter, Nolt::EthAddr>(ranges);
    // To the library, the zero address means every address.
    return filter.many.empty() && filter.one.isZero()
               ? MacFilter{{}, Intervals<Nolt::EthAddr>(std::move(ranges))}
               : filter;
}

IpFilter readIps(Texts const & texts) {
    std::vector<Intervals<Nolt::IpGenAddr>::Interval> ranges;
    forEachValue(texts, [&](std::string_view text) { ranges.push_back(readIpRange(text)); });
    return filterOf<IpFilter, Nolt::IpGenAddr>(std::move(ranges));
}

VtepFilter readVteps(Texts const & texts) {
    VtepFilter filter;
    std::vector<Intervals<Nolt::IpAddr>::Interval> subnets;
    forEachValue(texts, [&](std::string_view text) {
        if (!isSubnet(text)) {
            filter.addresses.push_back(readOne<Nolt::IpAddr>(text));
            return;
        }
        auto const prefix = readOne<Nolt::IpGenPrefix>(text);
        if (prefix.family() != Nolt::Family::ipv4) {
            refuse(text, "an IPv4 subnet such as 10.0.0.0/24");
        }
        subnets.push_back({prefix.address().ipv4(), state::narrow::lastAddress(prefix).ipv4()});
    });
    filter.subnets = Intervals<Nolt::IpAddr>(std::move(subnets));
    return filter;
}

PrefixFilter readPrefixes(Texts const & texts) {
    PrefixFilter filter;
    std::vector<Intervals<Nolt::IpGenAddr>::Interval> ranges;
    forEachValue(texts, [&](std::string_view text) {
        if (text.empty()) {
            refuse(text, aPrefix);
        }
        filter.one = readOne<Nolt::IpGenPrefix>(text);
        ranges.push_back({filter.one.address(), state::narrow::lastAddress(filter.one)});
    });
    if (ranges.size() > 1) {
        filter = {{}, Intervals<Nolt::IpGenAddr>(std::move(ranges))};
    }
    return filter;
}

} // namespace vxshow::cli::filter
