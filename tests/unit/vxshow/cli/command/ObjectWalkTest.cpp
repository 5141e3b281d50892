#include "vxshow/cli/command/ObjectWalk.h"

#include "Vex/TypeImpl.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "vxshow/cli/command/ObjectListing.h"

#include <gtest/gtest.h>

/// The model has no cycle and is not deep: this type, written by hand as the model compiler
/// would generate it, can be both.
namespace {

class Link : public Vex::PtrInterface {
public:
    static Vex::Type const _vexType;

    explicit Link(Vex::String name) : name_(std::move(name)) {}

    Vex::Type const & fwkType() const noexcept override { return _vexType; }

    Vex::String const & name() const { return name_; }

    Vex::Ptr<Link const> const & next() const { return next_; }

    void nextIs(Vex::Ptr<Link const> const & next) { next_ = next; }

private:
    Vex::String name_;
    Vex::Ptr<Link const> next_;
};

constexpr Vex::Attribute attributesOfLink[] = {
    {"name", 130, Vex::AttributeKind::constructorArgument, "Vex::String", "", ""},
    {"next", 131, Vex::AttributeKind::entityPointerPlain, "Link", "", ""},
    {"cut", 132, Vex::AttributeKind::method, "()", "", ""},
};
constexpr std::string_view argumentsOfLink[] = {"name"};

constexpr Vex::TypeImpl implOfLink{Vex::Constructor<Link, Vex::String>(),
                                   Vex::Readable(130, &Link::name),
                                   Vex::Plain(131, &Link::next, &Link::nextIs)};

constinit Vex::Type const Link::_vexType{"Test::Link",     Vex::Type::Kind::entity, nullptr,
                                         attributesOfLink, argumentsOfLink,         "",
                                         &implOfLink};

std::string shown(Vex::AnyValues const & objects, Vex::U32 format = textFormat) {
    OutputFile const file;
    outfmt::Printer printer(file.fd(), format, true, false, true, 0);
    if (format == textFormat) {
        vxshow::cli::command::printObjects(printer, objects);
    } else {
        vxshow::cli::command::renderObjectsJson(printer, objects);
    }
    printer.flush();
    return file.content();
}

/// Two links, each the next of the other, until the object is destroyed.
struct Cycle {
    Cycle() {
        first->nextIs(second);
        second->nextIs(first);
    }

    ~Cycle() { first->nextIs(nullptr); }

    Vex::Ptr<Link> first = Vex::makePtr<Link>("a");
    Vex::Ptr<Link> second = Vex::makePtr<Link>("b");
};

class DepthMeter final : public vxshow::cli::command::ObjectVisitor {
public:
    void value(vxshow::cli::command::Place const &, Vex::AnyValue const &) override { ++values; }

    void reference(vxshow::cli::command::Place const &, Vex::Type const &, std::size_t) override {}

    void beginObject(vxshow::cli::command::Place const &, Vex::Type const &,
                     std::size_t number) override {
        deepest = number;
    }

    void endObject() override { ++ended; }

    void beginCollection(Vex::Attribute const &, std::size_t) override {}

    void endCollection() override {}

    std::size_t values = 0;
    std::size_t deepest = 0;
    std::size_t ended = 0;
};

} // namespace

TEST(ObjectWalk, ACycleEndsAtTheObjectThatWasShown) {
    Cycle const cycle;
    EXPECT_EQ(shown({cycle.first}), "Test::Link #1\n"
                                    "  name : Vex::String = a\n"
                                    "  next : Link = Test::Link #2\n"
                                    "    name : Vex::String = b\n"
                                    "    next : Link = see #1\n");
    EXPECT_EQ(shown({cycle.first}, jsonFormat),
              R"({"objects":[{"type":"Test::Link","object":1,"attributes":{"name":"a",)"
              R"("next":{"type":"Test::Link","object":2,"attributes":{"name":"b",)"
              R"("next":{"object":1}}}}}]})"
              "\n");
}

TEST(ObjectWalk, AnObjectOfAnEarlierRootIsNotShownAgain) {
    auto const end = Vex::makePtr<Link>("");
    auto const start = Vex::makePtr<Link>("a");
    start->nextIs(end);
    EXPECT_EQ(shown({end, start, end}), "Test::Link #1\n"
                                        "  name : Vex::String =\n"
                                        "  next : Link = null\n"
                                        "Test::Link #2\n"
                                        "  name : Vex::String = a\n"
                                        "  next : Link = see #1\n"
                                        "see #1\n");
}

TEST(ObjectWalk, DepthNeedsNoStack) {
    constexpr std::size_t links = 200000;
    std::vector<Vex::Ptr<Link>> chain;
    for (std::size_t i = 0; i < links; ++i) {
        chain.push_back(Vex::makePtr<Link>("link"));
        if (i > 0) {
            chain[i - 1]->nextIs(chain[i]);
        }
    }
    DepthMeter meter;
    vxshow::cli::command::walkObjects({chain.front()}, meter);
    EXPECT_EQ(meter.deepest, links);
    EXPECT_EQ(meter.ended, links);
    EXPECT_EQ(meter.values, links + 1); // each name, and the null at the end
    for (auto const & link : chain) {
        link->nextIs(nullptr); // destroying the first would destroy the others within it
    }
}
