#pragma once

#include "Vex/Digits.h"
#include "Vex/Entity.h"
#include "Vex/Errors.h"
#include "Vex/Name.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <compare>
#include <string>
#include <string_view>
#include <utility>

/// Types that the test models import, one of each kind.
namespace Sea {

/// A scalar: passed by value.
class Depth {
public:
    Depth() = default;

    explicit Depth(Vex::U32 metres) : metres_(metres) {}

    Vex::U32 metres() const { return metres_; }

    /// Reads "7m". Throws `Vex::RangeError` above 1000m, `Vex::ParseError` for anything else.
    static Depth fromString(std::string_view text) {
        std::string_view const number = text.substr(0, text.empty() ? 0 : text.size() - 1);
        auto const metres = Vex::readDecimal(number, 1000);
        if (!text.ends_with('m') || !metres) {
            Vex::refuseNumber(text.ends_with('m') ? number : text, "0m to 1000m");
        }
        return Depth(*metres);
    }

    Vex::String stringValue() const { return std::to_string(metres_) + "m"; }

    auto operator<=>(Depth const &) const = default;

private:
    Vex::U32 metres_ = 0;
};

/// A value, keyed by its name.
class Buoy {
public:
    Buoy() = default;

    Buoy(Vex::Name name, Vex::U32 height) : name_(std::move(name)), height_(height) {}

    Vex::Name const & name() const { return name_; }

    Vex::U32 height() const { return height_; }

    bool operator==(Buoy const &) const = default;

private:
    Vex::Name name_;
    Vex::U32 height_ = 0;
};

/// An entity of another model.
class Chart : public Vex::PtrInterface {
public:
    explicit Chart(Vex::U32 sheet) : sheet_(sheet) {}

    Vex::U32 sheet() const { return sheet_; }

private:
    Vex::U32 sheet_;
};

} // namespace Sea
