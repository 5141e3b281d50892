#include "vxshow/sources/frr/Devices.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/text/JsonFields.h"

namespace vxshow::sources::frr {

namespace {

struct Device {
    bool isVxlan = false;
    bool isUp = false;
};

constexpr auto deviceObject = text::lenientObject(
    "an interface",
    text::optionalMember("interfaceType",
                         [](text::JsonValue & value, Device & into) {
                             into.isVxlan = value.text("a type").text() == "Vxlan";
                         }),
    text::optionalMember("operationalStatus", [](text::JsonValue & value, Device & into) {
        into.isUp = value.text("\"up\" or \"down\"").text() == "up";
    }));

constexpr auto deviceStateObject = text::lenientObject(
    "an interface", text::optionalMember("status", [](text::JsonValue & value, bool & isDown) {
        isDown = value.text("\"up\" or \"down\"").text() == "down";
    }));

} // namespace

void readDevices(text::JsonReader & json, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        join.step();
        if (!isEntry(value)) {
            return;
        }
        std::string const name(key.text());
        Device read;
        deviceObject.read(value, read);
        if (read.isVxlan && read.isUp) {
            join.vxlanDevice(name);
        }
    });
}

void readDeviceStates(text::JsonReader & json, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        join.step();
        if (!isEntry(value)) {
            return;
        }
        std::string name(key.text());
        bool isDown = false;
        deviceStateObject.read(value, isDown);
        if (isDown) {
            join.downDevice(std::move(name));
        }
    });
}

} // namespace vxshow::sources::frr
