#include "Nolt/IpAddr.h"
#include "Pelo/Bytes.h"
#include "Pelo/Table.h"
#include "Pelo/TableWriter.h"
#include "Vex/Entity.h"
#include "Vex/FlatHashMap.h"
#include "Vex/HashMap.h"
#include "Vex/Name.h"
#include "Vex/OrderedMap.h"
#include "Vex/Ptr.h"
#include "Vex/Slot.h"
#include "outfmt/AttrInfo.h"
#include "outfmt/Printer.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

/// Performs one operation on one collection of a given size, for growth.py to count its steps:
///
///     growth_collections NAME SIZE
///     growth_collections --list
///
/// The second form lists the names. A name is a collection and an operation.
namespace {

using Vex::U32;
using Vex::U64;
using Vex::U8;

/// A different number for each `i`, in no order.
U32 scattered(U32 i) {
    return i * 0x9E3779B1U;
}

/// Ends the program with an error unless an operation did what it should.
void check(bool done) {
    if (!done) {
        throw std::logic_error("the collection does not have what was put into it");
    }
}

// One way to make keys and slots for each flavour of entry.

struct Value {
    Nolt::IpAddr address;
    U32 number;

    Nolt::IpAddr const & key() const noexcept { return address; }

    bool operator==(Value const &) const = default;
};

class Item : public Vex::Entity {
public:
    explicit Item(Nolt::IpAddr address) : address_(address) {}

    Nolt::IpAddr const & key() const noexcept { return address_; }

private:
    Nolt::IpAddr address_;
};

using ValueSlot = Vex::ValueSlot<Nolt::IpAddr, Value, &Value::key>;
using EntitySlot = Vex::EntitySlot<Nolt::IpAddr, Item, &Item::key>;
using SetSlot = Vex::SetSlot<Nolt::IpAddr>;
using TextSlot = Vex::SetSlot<std::string>;
using SharedSlot = Vex::PtrSlot<Nolt::IpAddr, Item>;

template <class Key>
Key keyOf(U32 number) {
    if constexpr (std::is_same_v<Key, std::string>) {
        return "leaf" + std::to_string(number);
    } else {
        return Key(number);
    }
}

template <class Slot>
Slot slotOf(U32 number) {
    auto const key = keyOf<typename Slot::Key>(number);
    if constexpr (std::is_same_v<Slot, ValueSlot>) {
        return Slot(Value{key, number});
    } else if constexpr (std::is_same_v<Slot, EntitySlot>) {
        return Slot(Vex::makePtr<Item>(key));
    } else if constexpr (std::is_same_v<Slot, SharedSlot>) {
        return Slot(key, Vex::makePtr<Item>(key));
    } else {
        return Slot(key, true);
    }
}

/// The order in which entries are inserted, looked up or removed.
using Order = U32 (*)(U32 i, U32 size);

U32 ascending(U32 i, U32 /*size*/) {
    return i;
}

U32 descending(U32 i, U32 size) {
    return size - 1 - i;
}

U32 random(U32 i, U32 /*size*/) {
    return scattered(i);
}

template <class Map>
Map filled(U32 size, Order order) {
    Map map;
    for (U32 i = 0; i < size; ++i) {
        map.upsert(slotOf<typename Map::Slot>(order(i, size)));
    }
    check(map.size() == size);
    return map;
}

template <class Map>
void lookUp(U32 size) {
    Map const map = filled<Map>(size, random);
    for (U32 i = 0; i < size; ++i) {
        check(map.find(keyOf<typename Map::Key>(scattered(i))) != nullptr);
        check(map.find(keyOf<typename Map::Key>(scattered(size + i))) == nullptr);
    }
}

template <class Map>
U32 walked(Map const & map) {
    U32 entries = 0;
    for (auto it = map.begin(); it != map.end(); ++it) {
        ++entries;
    }
    return entries;
}

template <class Map>
void walk(U32 size) {
    check(walked(filled<Map>(size, random)) == size);
}

template <class Map>
void copy(U32 size) {
    Map const map = filled<Map>(size, random);
    Map const other = map;
    check(other.size() == size);
}

template <class Map>
void remove(U32 size, Order order) {
    auto map = filled<Map>(size, random);
    for (U32 i = 0; i < size; ++i) {
        // Scattered keys in the order of their insertion, its reverse, or another one.
        check(map.remove(keyOf<typename Map::Key>(scattered(order(i, size)))).has_value());
    }
    check(map.empty());
}

template <class Map>
void removeWhileWalking(U32 size) {
    auto map = filled<Map>(size, random);
    for (auto it = map.begin(); it; ++it) {
        check(map.remove(it).has_value());
    }
    check(map.empty());
}

/// At each step of a walk, an entry elsewhere is removed, so that the iterator must find its place.
template <class Map>
void removeOthersWhileWalking(U32 size) {
    auto map = filled<Map>(size, ascending);
    U32 removed = 0;
    for (auto it = map.begin(); it && removed < size; ++it) {
        ++removed;
        check(map.remove(keyOf<typename Map::Key>(size - removed)).has_value());
    }
    check(map.size() == size - removed);
}

template <class Map>
void emptyFromTheFront(U32 size) {
    auto map = filled<Map>(size, random);
    while (!map.empty()) {
        auto first = map.begin();
        check(map.remove(first).has_value());
    }
}

template <class Map>
void insertWhileWalking(U32 size) {
    auto map = filled<Map>(size, [](U32 i, U32) { return 2 * i; });
    U32 entries = 0;
    for (auto it = map.begin(); it && entries < size; ++it, ++entries) {
        map.upsert(slotOf<typename Map::Slot>(2 * entries + 1));
    }
    check(map.size() == 2 * size);
}

// The shared tables.

struct NumberSchema {
    using Key = U32;
    using Value = U64;

    static constexpr std::string_view tag = "Growth::Number";
    static constexpr U32 keySize = 4;
    static constexpr U32 valueSize = 8;

    static void encodeKey(U32 key, U8 * out) { Pelo::writeNumber<4>(out, key); }

    static U32 decodeKey(U8 const * in) { return static_cast<U32>(Pelo::readNumber<4>(in)); }

    static void encodeValue(U64 value, U8 * out) { Pelo::writeNumber<8>(out, value); }

    static U64 decodeValue(U8 const * in) { return Pelo::readNumber<8>(in); }
};

class NumberTable : public Vex::Entity, public Pelo::Table<NumberSchema> {
public:
    explicit NumberTable(Pelo::Reader<NumberSchema> reader) : Table(std::move(reader)) {}
};

using SharedTable = Pelo::TableWriter<NumberTable>;

SharedTable filledTable(U32 size, Order order) {
    SharedTable table("growth");
    for (U32 i = 0; i < size; ++i) {
        table.insert(order(i, size), 1);
    }
    check(table.size() == size);
    return table;
}

void lookUpInTable(U32 size) {
    SharedTable const writer = filledTable(size, random);
    for (U32 i = 0; i < size; ++i) {
        check(writer.table()->value(scattered(i)) == 1);
        check(writer.table()->value(scattered(size + i)) == 0);
    }
}

void walkTable(U32 size) {
    SharedTable const writer = filledTable(size, random);
    U32 entries = 0;
    for (auto it = writer.table()->begin(); it != writer.table()->end(); ++it) {
        ++entries;
    }
    check(entries == size);
}

void removeFromTable(U32 size) {
    SharedTable writer = filledTable(size, random);
    for (U32 i = 0; i < size; ++i) {
        check(writer.erase(scattered(i)));
    }
    check(writer.size() == 0);
}

/// Inserts a new key for each one that it removes, so that few entries are ever live.
void turnOverTable(U32 size) {
    SharedTable writer = filledTable(4, ascending);
    for (U32 i = 0; i < size; ++i) {
        writer.insert(i + 4, 1);
        check(writer.erase(i));
    }
    check(writer.size() == 4);
}

// The printer.

constexpr unsigned compactJson = 2;
constexpr unsigned indentedJson = 3;
constexpr unsigned text = 1;

void print(unsigned format, std::function<void(outfmt::Printer &)> const & body) {
    outfmt::Printer printer(1, format, true, false, true, 0);
    printer.start();
    body(printer);
    printer.end();
}

void printEntries(unsigned format, U32 size) {
    print(format, [&](outfmt::Printer & printer) {
        outfmt::Attr32Info number(printer, "number");
        printer.startList("entries");
        for (U32 i = 0; i < size; ++i) {
            printer.startListEntry();
            number.setValue(static_cast<int>(i));
            printer.addAttributesJson(1, number.getArg());
            printer.endListEntry();
        }
        printer.endList();
    });
}

void printNested(unsigned format, U32 size) {
    print(format, [&](outfmt::Printer & printer) {
        for (U32 i = 0; i < size; ++i) {
            printer.startDict("inner");
        }
        for (U32 i = 0; i < size; ++i) {
            printer.endDict();
        }
    });
}

/// The lists are left open, and one call closes them all.
void printOpenLists(U32 size) {
    print(compactJson, [&](outfmt::Printer & printer) {
        printer.startDict("outer");
        for (U32 i = 0; i < size; ++i) {
            printer.startList("list");
            printer.startDict("inner");
        }
    });
}

void printText(unsigned format, std::string const & letters) {
    print(format, [&](outfmt::Printer & printer) {
        outfmt::StringAttrInfo info(printer, "text");
        info.setValue(letters);
        printer.addAttributesJson(1, info.getArg());
    });
}

using Operations = std::map<std::string, std::function<void(U32)>>;

template <class Map>
void addSearching(Operations & operations, std::string const & name) {
    operations[name + ", filled in order"] = [](U32 n) { filled<Map>(n, ascending); };
    operations[name + ", filled in reverse"] = [](U32 n) { filled<Map>(n, descending); };
    operations[name + ", looked up"] = lookUp<Map>;
}

template <class Map>
void addWalking(Operations & operations, std::string const & name) {
    operations[name + ", walked"] = walk<Map>;
    operations[name + ", copied"] = copy<Map>;
}

template <class Map>
void addRemoving(Operations & operations, std::string const & name) {
    operations[name + ", removed"] = [](U32 n) { remove<Map>(n, ascending); };
    operations[name + ", removed in reverse"] = [](U32 n) { remove<Map>(n, descending); };
    operations[name + ", removed while walking"] = removeWhileWalking<Map>;
    operations[name + ", others removed while walking"] = removeOthersWhileWalking<Map>;
    operations[name + ", emptied from the front"] = emptyFromTheFront<Map>;
    operations[name + ", inserted while walking"] = insertWhileWalking<Map>;
}

Operations allOperations() {
    Operations all;
    addSearching<Vex::OrderedMap<ValueSlot>>(all, "ordered values");
    addWalking<Vex::OrderedMap<ValueSlot>>(all, "ordered values");
    addRemoving<Vex::OrderedMap<ValueSlot>>(all, "ordered values");
    addSearching<Vex::OrderedMap<SetSlot>>(all, "ordered set");
    addSearching<Vex::OrderedMap<TextSlot>>(all, "ordered set of texts");
    addRemoving<Vex::OrderedMap<EntitySlot>>(all, "ordered entities");
    addWalking<Vex::OrderedMap<SharedSlot>>(all, "shared entities");
    addSearching<Vex::HashMap2018<ValueSlot>>(all, "hashed values");
    addWalking<Vex::HashMap2018<ValueSlot>>(all, "hashed values");
    addRemoving<Vex::HashMap2018<ValueSlot>>(all, "hashed values");
    addSearching<Vex::HashMap2018<SetSlot>>(all, "hashed set");
    addRemoving<Vex::HashMap2018<EntitySlot>>(all, "hashed entities");
    addSearching<Vex::FlatHashMap<ValueSlot>>(all, "flat hashed values");
    addWalking<Vex::FlatHashMap<ValueSlot>>(all, "flat hashed values");
    addSearching<Vex::FlatHashMap<SetSlot>>(all, "flat hashed set");

    all["shared table, filled in order"] = [](U32 n) { filledTable(n, ascending); };
    all["shared table, filled in reverse"] = [](U32 n) { filledTable(n, descending); };
    all["shared table, looked up"] = lookUpInTable;
    all["shared table, walked"] = walkTable;
    all["shared table, removed"] = removeFromTable;
    all["shared table, turned over"] = turnOverTable;

    for (auto const & [name, format] :
         {std::pair{"text", text}, {"compact", compactJson}, {"indented", indentedJson}}) {
        std::string const printer = std::string("printer of ") + name;
        all[printer + ", entries"] = [format = format](U32 n) { printEntries(format, n); };
        all[printer + ", long text"] = [format = format](U32 n) {
            printText(format, std::string(64 * n, 'x'));
        };
    }
    all["printer of compact, nested"] = [](U32 n) { printNested(compactJson, n); };
    all["printer of compact, open lists"] = printOpenLists;
    all["printer of compact, escapes"] = [](U32 n) {
        printText(compactJson, std::string(n, '\1'));
    };
    return all;
}

int run(Operations const & operations, std::string_view name, std::string_view written) {
    U32 size = 0;
    auto const operation = operations.find(std::string(name));
    auto const [end, error] =
        std::from_chars(written.data(), written.data() + written.size(), size);
    if (operation == operations.end() || error != std::errc() || *end != '\0') {
        std::fputs("usage: growth_collections NAME SIZE | --list\n", stderr);
        return 2;
    }
    operation->second(size);
    return 0;
}

} // namespace

int main(int argc, char ** argv) {
    auto const operations = allOperations();
    if (argc == 2 && std::string_view(argv[1]) == "--list") {
        for (auto const & [name, operation] : operations) {
            std::puts(name.c_str());
        }
        return 0;
    }
    return run(operations, argc == 3 ? argv[1] : "", argc == 3 ? argv[2] : "");
}
