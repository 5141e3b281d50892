#include "vxshow/cli/command/ObjectListing.h"

#include "Vex/Errors.h"
#include "vxshow/cli/MemberPrinter.h"
#include "vxshow/cli/command/ModelAttributes.h"
#include "vxshow/cli/command/ObjectWalk.h"

#include <string>
#include <vector>

namespace vxshow::cli::command {

namespace {

std::string keyText(Place const & place) {
    return place.key->text().value_or(place.key->typeName());
}

class TextObjects final : public ObjectVisitor {
public:
    explicit TextObjects(outfmt::Printer & printer) : printer_(printer) {}

    void value(Place const & place, Vex::AnyValue const & value) override {
        auto const text = value.text();
        line(place, value.isNull() ? "null"
                    : text         ? Vex::printable(*text)
                                   : Vex::String("(not part of the model)"));
    }

    void reference(Place const & place, Vex::Type const & /* type */, std::size_t number) override {
        line(place, "see #" + std::to_string(number));
    }

    void beginObject(Place const & place, Vex::Type const & type, std::size_t number) override {
        std::string text(type.name);
        if (number > 0) {
            text.append(" #").append(std::to_string(number));
        }
        line(place, text);
        indent();
    }

    void endObject() override { outdent(); }

    void beginCollection(Vex::Attribute const & attribute, std::size_t count) override {
        line({&attribute}, std::to_string(count) + (count == 1 ? " entry" : " entries"));
        indent();
    }

    void endCollection() override { outdent(); }

private:
    static constexpr std::size_t step = 2;

    void indent() { margin_.append(step, ' '); }

    void outdent() { margin_.resize(margin_.size() - step); }

    /// No blank follows the sign when the text is empty.
    void line(Place const & place, std::string_view text) {
        char const * const blank = text.empty() ? "" : " ";
        if (place.key) {
            printer_.addFrills("%s[%s] =%s%s\n", margin_, Vex::printable(keyText(place)), blank,
                               text);
        } else if (place.attribute) {
            printer_.addFrills("%s%s : %s =%s%s\n", margin_, place.attribute->name,
                               typeOf(*place.attribute), blank, text);
        } else {
            printer_.addFrills("%s%s\n", margin_, text);
        }
    }

    outfmt::Printer & printer_;
    std::string margin_;
};

class JsonObjects final : public ObjectVisitor {
public:
    explicit JsonObjects(outfmt::Printer & printer) : printer_(printer), members_(printer) {}

    void value(Place const & place, Vex::AnyValue const & value) override {
        auto const text = value.text();
        if (!text) {
            openPlace(place);
            if (value.isNull()) {
                members_.boolean("null", true);
            } else {
                members_.text("type", place.attribute->type);
            }
            closePlace();
            return;
        }
        auto const name = openEntry(place);
        auto const type = value.typeName();
        if (type == "bool") {
            members_.boolean(name, value.as<bool>());
        } else if (type == "U8") {
            members_.number(name, value.as<Vex::U8>());
        } else if (type == "U16") {
            members_.number(name, value.as<Vex::U16>());
        } else if (type == "U32") {
            members_.number(name, value.as<Vex::U32>());
        } else {
            members_.text(name, *text);
        }
        closeEntry(place);
    }

    void reference(Place const & place, Vex::Type const & /* type */, std::size_t number) override {
        openPlace(place);
        objectNumber(number);
        closePlace();
    }

    void beginObject(Place const & place, Vex::Type const & type, std::size_t number) override {
        openPlace(place);
        members_.text("type", type.name);
        if (number > 0) {
            objectNumber(number);
        }
        printer_.startDict("attributes");
    }

    void endObject() override {
        printer_.endDict();
        closePlace();
    }

    void beginCollection(Vex::Attribute const & attribute, std::size_t /* count */) override {
        printer_.startList(attribute.name);
    }

    void endCollection() override { printer_.endList(); }

private:
    /// Opens the list entry of a collection's entry. Returns the key of the value.
    std::string_view openEntry(Place const & place) {
        if (!place.key) {
            return place.attribute->name;
        }
        printer_.startListEntry();
        members_.text("key", keyText(place));
        return "value";
    }

    void closeEntry(Place const & place) {
        if (place.key) {
            printer_.endListEntry();
        }
    }

    /// Opens the dictionary of what is at that place.
    void openPlace(Place const & place) {
        places_.push_back({place.attribute == nullptr, place.key != nullptr});
        if (place.attribute) {
            printer_.startDict(openEntry(place));
        } else {
            printer_.startListEntry();
        }
    }

    void closePlace() {
        auto const place = places_.back();
        places_.pop_back();
        if (place.isRoot) {
            printer_.endListEntry();
            return;
        }
        printer_.endDict();
        if (place.isEntry) {
            printer_.endListEntry();
        }
    }

    void objectNumber(std::size_t number) {
        members_.number("object", static_cast<Vex::U32>(number));
    }

    struct OpenPlace {
        bool isRoot;
        bool isEntry;
    };

    outfmt::Printer & printer_;
    MemberPrinter members_;
    std::vector<OpenPlace> places_;
};

} // namespace

void printObjects(outfmt::Printer & printer, Vex::AnyValues const & objects) {
    TextObjects text(printer);
    walkObjects(objects, text);
}

void renderObjectsJson(outfmt::Printer & printer, Vex::AnyValues const & objects) {
    JsonObjects json(printer);
    printer.start();
    printer.startList("objects");
    walkObjects(objects, json);
    printer.endList();
    printer.end();
}

} // namespace vxshow::cli::command
