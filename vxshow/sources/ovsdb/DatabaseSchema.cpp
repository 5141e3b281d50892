#include "vxshow/sources/ovsdb/DatabaseSchema.h"

#include "vxshow/sources/AnswerError.h"
#include "vxshow/text/JsonFields.h"
#include "vxshow/text/JsonRefusal.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::ovsdb {

namespace {

constexpr auto locatorObject = text::lenientObject(
    "a table", text::requiredMember("columns", [](text::JsonValue & value, DatabaseSchema & into) {
        value.members("an object of columns", [&](text::JsonText const & name, text::JsonValue &) {
            into.locatorKey = into.locatorKey || name.text() == "tunnel_key";
        });
    }));

/// A table that is there matters, whatever its columns are.
constexpr auto presentTable(text::MemberName name, bool DatabaseSchema::*isThere) {
    return text::optionalMember(
        name, [isThere](text::JsonValue &, DatabaseSchema & into) { into.*isThere = true; });
}

constexpr auto tablesObject = text::lenientObject(
    "an object of tables", presentTable("Logical_Router", &DatabaseSchema::logicalRouter),
    presentTable("Arp_Sources_Local", &DatabaseSchema::arpSourcesLocal),
    presentTable("Arp_Sources_Remote", &DatabaseSchema::arpSourcesRemote),
    text::optionalMember("Physical_Locator", [](text::JsonValue & value, DatabaseSchema & into) {
        locatorObject.read(value, into);
    }));

constexpr auto schemaObject = text::lenientObject(
    "a schema",
    text::optionalMember("version",
                         [](text::JsonValue & value, DatabaseSchema & into) {
                             into.version = text::shownText(value.text("a version").text());
                         }),
    text::requiredMember("tables", [](text::JsonValue & value, DatabaseSchema & into) {
        tablesObject.read(value, into);
    }));

/// What has the VNI of its locator; routers have that of their logical switch.
constexpr Subjects macsAndBindings =
    macsOfBothSides | Subject::localBindings | Subject::remoteBindings;

} // namespace

std::vector<Remark> DatabaseSchema::remarks() const {
    auto const lacks = (version.empty() ? "its schema" : "its schema, version " + version + ",") +
                       std::string(" has no ");
    std::vector<Remark> remarks;
    if (!logicalRouter) {
        remarks.push_back({Subject::routers, lacks + "Logical_Router: no routers are shown"});
    }
    if (!locatorKey) {
        remarks.push_back(
            {macsAndBindings, lacks + "Physical_Locator.tunnel_key: entries of a logical switch "
                                      "without a tunnel_key are left out"});
    }
    return remarks;
}

DatabaseSchema readSchema(system::FileBytes const & printed) {
    DatabaseSchema schema{false, false, false, false};
    try {
        text::JsonReader json(printed);
        schemaObject.read(json, schema);
    } catch (text::Refusal const & refusal) {
        throw AnswerError("schema: " +
                          text::refusalLine(refusal, printed.text(), text::JsonRoot::object));
    } catch (text::MalformedJson const & malformed) {
        throw AnswerError("schema: " +
                          text::refusalLine(malformed, printed.text(), text::JsonRoot::object));
    }
    return schema;
}

} // namespace vxshow::sources::ovsdb
