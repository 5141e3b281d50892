#include "vxshow/system/TimeOfDay.h"

#include <array>
#include <ctime>

namespace vxshow::system {

std::string timeOfDay() {
    std::time_t const now = std::time(nullptr);
    std::tm local{};
    std::array<char, 16> text{};
    if (!localtime_r(&now, &local)) {
        return "?";
    }
    return {text.data(), std::strftime(text.data(), text.size(), "%H:%M:%S", &local)};
}

} // namespace vxshow::system
