#include "vxshow/cli/command/ModelListing.h"

#include "vxshow/cli/MemberPrinter.h"
#include "vxshow/cli/command/ModelAttributes.h"

#include <algorithm>
#include <string>

namespace vxshow::cli::command {

namespace {

std::string_view kindOf(Vex::Type const & type) {
    return type.kind == Vex::Type::Kind::entity ? "entity" : "value";
}

void printDoc(outfmt::Printer & printer, std::string_view margin, std::string_view doc) {
    while (!doc.empty()) {
        auto const end = std::min(doc.find('\n'), doc.size());
        printer.addFrills("%s%s\n", margin, doc.substr(0, end));
        doc.remove_prefix(std::min(end + 1, doc.size()));
    }
}

void renderAttributesJson(outfmt::Printer & printer, Vex::Type const & type) {
    MemberPrinter members(printer);
    printer.startList("attributes");
    for (auto const * attribute : allAttributes(type)) {
        bool const own =
            std::any_of(type.attributes.begin(), type.attributes.end(),
                        [&](auto const & candidate) { return &candidate == attribute; });
        printer.startListEntry();
        members.number("number", attribute->number);
        members.text("name", attribute->name);
        members.text("kind", Vex::kindText(attribute->kind));
        members.text("type", attribute->type);
        if (!attribute->key.empty()) {
            members.text("key", attribute->key);
        }
        members.text("doc", attribute->doc);
        members.boolean("inherited", !own);
        printer.endListEntry();
    }
    printer.endList();
}

} // namespace

void printTypes(outfmt::Printer & printer, ModelTypes const & types) {
    printer.addFrills("%-43s %-6s %-30s %s\n", "Type", "Kind", "Base", "Attributes");
    printer.addFrills("------------------------------------------- ------ "
                      "------------------------------ ----------\n");
    for (auto const * type : types) {
        printer.addFrills("%-43s %-6s %-30s %10u\n", type->name, kindOf(*type),
                          type->base ? type->base->name : "-",
                          static_cast<unsigned>(allAttributes(*type).size()));
    }
}

void printType(outfmt::Printer & printer, Vex::Type const & type) {
    printer.addFrills("Type:        %s\n", type.name);
    printer.addFrills("Kind:        %s\n", kindOf(type));
    printer.addFrills("Base:        %s\n", type.base ? type.base->name : "-");
    std::string arguments;
    for (auto const argument : type.constructorArguments) {
        arguments.append(arguments.empty() ? "" : ", ").append(argument);
    }
    printer.addFrills("Constructor: (%s)\n", arguments);
    printDoc(printer, "", type.doc);
    printer.addFrills("\n");
    printer.addFrills("%-6s %-24s %-24s %s\n", "Number", "Name", "Kind", "Type");
    printer.addFrills("------ ------------------------ ------------------------ "
                      "------------------------\n");
    for (auto const * attribute : allAttributes(type)) {
        printer.addFrills("%6u %-24s %-24s %s\n", attribute->number, attribute->name,
                          Vex::kindText(attribute->kind), typeOf(*attribute));
        printDoc(printer, "         ", attribute->doc);
    }
}

void renderTypesJson(outfmt::Printer & printer, ModelTypes const & types) {
    MemberPrinter members(printer);
    printer.start();
    printer.startList("types");
    for (auto const * type : types) {
        printer.startListEntry();
        members.text("name", type->name);
        members.text("kind", kindOf(*type));
        if (type->base) {
            members.text("base", type->base->name);
        }
        members.text("doc", type->doc);
        printer.startList("constructorArguments");
        for (auto const argument : type->constructorArguments) {
            members.text("", argument);
        }
        printer.endList();
        renderAttributesJson(printer, *type);
        printer.endListEntry();
    }
    printer.endList();
    printer.end();
}

} // namespace vxshow::cli::command
