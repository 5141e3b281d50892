#include "vxshow/sources/frr/ReadDocument.h"

#include "vxshow/sources/frr/Devices.h"
#include "vxshow/sources/frr/Macs.h"
#include "vxshow/sources/frr/Neighbours.h"
#include "vxshow/sources/frr/Segments.h"
#include "vxshow/sources/frr/Vnis.h"
#include "vxshow/sources/frr/Vrfs.h"
#include "vxshow/sources/frr/VtyshWords.h"
#include "vxshow/text/JsonRefusal.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::frr {

namespace {

using Kind = Question::Kind;

/// The document without blanks, if it is at most a few characters without them.
std::string withoutBlanks(std::string_view document) {
    constexpr std::size_t enough = 5;
    std::string text;
    for (auto at = text::pastBlanks(document, 0); at < document.size() && text.size() < enough;
         at = text::pastBlanks(document, at + 1)) {
        text += document[at];
    }
    return text;
}

/// An empty answer: no text, `{}`, `[]` or `null`, depending on the command and the version.
bool isNothing(std::string_view document) {
    auto const text = withoutBlanks(document);
    return text.empty() || text == "{}" || text == "[]" || text == "null";
}

/// zebra has this answer if EVPN is not active: nothing at all, and since FRR 9.0 an empty object
/// where otherwise a list or an object with members is.
bool isWithoutEvpn(Question const & question, std::string_view document) {
    auto const text = withoutBlanks(document);
    switch (question.kind) {
    case Kind::vnis:
    case Kind::evpn:
        return text.empty() || text == "{}";
    case Kind::vni:
        return text.empty();
    default:
        return false;
    }
}

bool isAtStart(text::Refusal const & refusal, std::string_view document) {
    return refusal.at == document.data() + text::pastBlanks(document, 0);
}

text::JsonRoot rootOf(Kind kind) {
    return kind == Kind::vnis || kind == Kind::segments ? text::JsonRoot::array
                                                        : text::JsonRoot::object;
}

void read(Question const & question, system::PaddedText document, Collector & join) {
    join.bytes(document.text().size());
    text::JsonReader json(document);
    join.bytes(document.text().size());
    switch (question.kind) {
    case Kind::evpn:
        return;
    case Kind::vnis:
        return readVnis(json, join);
    case Kind::vni:
        return readVni(json, join);
    case Kind::macs:
    case Kind::macsInDetail:
        return readMacs(json, join);
    case Kind::macsOfVni:
        return readMacsOfVni(json, question.vni, join);
    case Kind::mac:
        return readMac(json, question.vni, join);
    case Kind::segments:
        return readSegments(json, join);
    case Kind::neighbours:
        return readNeighbours(json, join);
    case Kind::neighboursOfVni:
        return readNeighboursOfVni(json, question.vni, join);
    case Kind::vrfs:
        return readVrfs(json, join);
    case Kind::devices:
        return readDevices(json, join);
    case Kind::deviceStates:
        return readDeviceStates(json, join);
    case Kind::interfaces:
        return readInterfaces(json, question.vrf, join);
    case Kind::routes:
    case Kind::routesIpv6:
        return readRoutes(json, question.vrf, join);
    }
}

} // namespace

void readDocument(Question const & question, system::PaddedText document, Collector & join) {
    if (question.kind == Kind::macsInDetail) {
        join.forgetMacs();
    } else if (question.kind == Kind::mac) {
        join.forgetSegmentedMac(question.vni, question.mac);
    }
    if (question.isOptional() && isComplaint(document.text())) {
        auto const line = document.text().substr(0, document.text().find_first_of("\r\n"));
        return join.deviceStatesAreUnknown(question.command() + ": vtysh says " +
                                           text::shownText(line));
    }
    if (isWithoutEvpn(question, document.text())) {
        return join.evpnIsNotActive();
    }
    if (isNothing(document.text())) {
        return;
    }
    auto const root = rootOf(question.kind);
    auto const step = [&] { join.step(); };
    try {
        read(question, document, join);
    } catch (text::Refusal const & refusal) {
        auto const what =
            question.command() + ": " + text::refusalLine(refusal, document.text(), root, step);
        if (*refusal.at != '{' && *refusal.at != '[' && isAtStart(refusal, document.text())) {
            throw AnswerError(what);
        }
        throw UnknownShape(what);
    } catch (text::MalformedJson const & malformed) {
        throw AnswerError(question.command() + ": " +
                          text::refusalLine(malformed, document.text(), root, step));
    }
}

Answer readDocuments(std::vector<Document> const & documents, VtepSource const & source,
                     state::Selection const & selection, Deadline const & deadline) {
    Collector join(selection, deadline, source.maxFacts);
    for (auto const & document : documents) {
        readDocument(document.question, document.bytes.padded(), join);
    }
    return join.finished(source);
}

} // namespace vxshow::sources::frr
