#include "vxshow/sources/frr/ReadDocument.h"

#include "vxshow/sources/frr/Macs.h"
#include "vxshow/sources/frr/Neighbours.h"
#include "vxshow/sources/frr/Segments.h"
#include "vxshow/sources/frr/Vnis.h"
#include "vxshow/sources/frr/Vrfs.h"
#include "vxshow/text/JsonRefusal.h"

namespace vxshow::sources::frr {

namespace {

using Kind = Question::Kind;

bool isBlank(std::string_view document) {
    return text::pastBlanks(document, 0) == document.size();
}

/// An empty answer: no text, `{}`, `{ }` or `[]`, depending on the command.
bool isNothing(std::string_view document) {
    auto const first = text::pastBlanks(document, 0);
    if (first == document.size()) {
        return true;
    }
    auto const end = document[first] == '{' ? '}' : document[first] == '[' ? ']' : '\0';
    auto const last = text::pastBlanks(document, first + 1);
    return end != '\0' && last < document.size() && document[last] == end &&
           text::pastBlanks(document, last + 1) == document.size();
}

text::JsonRoot rootOf(Kind kind) {
    return kind == Kind::vnis || kind == Kind::segments ? text::JsonRoot::array
                                                        : text::JsonRoot::object;
}

void read(Question const & question, system::PaddedText document, Collector & join) {
    text::JsonReader json(document);
    switch (question.kind) {
    case Kind::vnis:
        return readVnis(json, join);
    case Kind::vni:
        return readVni(json, join);
    case Kind::macs:
        return readMacs(json, false, join);
    case Kind::macsOfVni:
        return readMacsOfVni(json, question.vni, join);
    case Kind::macsInDetail:
        return readMacs(json, true, join);
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
    bool const isAboutVnis = question.kind == Kind::vnis || question.kind == Kind::vni;
    if (isAboutVnis && isBlank(document.text())) {
        return join.evpnDisabled();
    }
    if (isNothing(document.text())) {
        return;
    }
    auto const root = rootOf(question.kind);
    try {
        read(question, document, join);
    } catch (text::Refusal const & refusal) {
        throw AnswerError(question.command() + ": " +
                          text::refusalLine(refusal, document.text(), root));
    } catch (text::MalformedJson const & malformed) {
        throw AnswerError(question.command() + ": " +
                          text::refusalLine(malformed, document.text(), root));
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
