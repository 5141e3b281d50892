#pragma once

#include "Vex/Slot.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Input.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

/// A keyed collection beside a std::map: the input drives the same changes of both, with live
/// iterators, and both must always have the same content.
namespace fuzz {

/// A value with its key, whose number is on the heap: a use of one that is gone is found. The key
/// says how large the value is.
template <class Key>
class MapEntry {
public:
    MapEntry(Key key, unsigned number) : key_(key), number_(std::make_shared<unsigned>(number)) {}

    Key const & key() const noexcept { return key_; }

    unsigned number() const noexcept { return *number_; }

    bool operator==(MapEntry const & other) const {
        return key_ == other.key_ && *number_ == *other.number_;
    }

private:
    Key key_;
    std::shared_ptr<unsigned> number_;
    std::array<char, Key::padding> padding_{};
};

template <class Key>
using MapEntrySlot = Vex::ValueSlot<Key, MapEntry<Key>, &MapEntry<Key>::key>;

/// `Less` is the order in which `Map` is walked. A key is made from a number from 0 to 255;
/// `beside(which)` is the key before it, itself, or the one after, for 0, 1 and 2; `plus(count)`
/// the one that follows after `count`. `Key::fillFactor` says how many more keys fill a map at a
/// time.
template <class Map, class Less>
class MapTwin {
public:
    explicit MapTwin(std::string_view bytes) : input_(bytes) {}

    /// Runs the whole input.
    void run() {
        for (unsigned step = 1; !input_.empty(); ++step) {
            change();
            checkWalkers();
            if (step % 8 == 0) {
                checkAll();
            }
        }
        checkAll();
    }

private:
    using Key = typename Map::Key;

    struct Node {
        Key key;
        unsigned number;
    };

    using Expected = std::map<Key, std::shared_ptr<Node>, Less>;

    struct Pair {
        Map map;
        Expected expected;
    };

    struct Walker {
        typename Map::Iterator it;
        unsigned pair = 0;
        std::shared_ptr<Node> on;
    };

    void change() {
        auto const what = input_.below(16);
        Pair & pair = pairs_[input_.below(2)];
        switch (what) {
        case 0:
        case 1:
        case 2:
            return upsert(pair, key());
        case 3:
        case 4:
            return findOrInsert(pair, key());
        case 5:
        case 6:
            return remove(pair, key());
        case 7:
            return find(pair, key());
        case 8:
            return start(walker(), static_cast<unsigned>(&pair - pairs_.data()));
        case 9:
        case 10:
            return stepOn(walker());
        case 11:
            return removeAt(walker());
        case 12:
            walker() = walker();
            return;
        case 13:
            return fill(pair);
        case 14:
            return wholeMap(pair);
        default:
            return upsert(pair, nearWalker());
        }
    }

    Key key() { return Key(input_.byte()); }

    Walker & walker() { return walkers_[input_.below(static_cast<unsigned>(walkers_.size()))]; }

    /// Near an iterator, where blocks are divided.
    Key nearWalker() {
        Walker const & near = walker();
        auto const number = input_.byte();
        return near.on ? near.on->key.beside(number % 3) : Key(number);
    }

    void upsert(Pair & pair, Key key) {
        auto const number = ++numbers_;
        pair.map.upsert(typename Map::Slot(MapEntry<Key>(key, number)));
        auto & node = pair.expected[key];
        if (node) {
            node->number = number;
        } else {
            node = std::make_shared<Node>(Node{key, number});
        }
    }

    void findOrInsert(Pair & pair, Key key) {
        bool made = false;
        auto const number = ++numbers_;
        auto const & slot = pair.map.findOrInsert(key, [&] {
            made = true;
            return typename Map::Slot(MapEntry<Key>(key, number));
        });
        auto & node = pair.expected[key];
        check(made == !node, "findOrInsert inserts an entry that is there, or does not insert one");
        if (made) {
            node = std::make_shared<Node>(Node{key, number});
        }
        check(slot.element().number() == node->number, "findOrInsert returns another entry");
    }

    void find(Pair const & pair, Key key) {
        auto const * const found = pair.map.find(key);
        auto const known = pair.expected.find(key);
        check((found != nullptr) == (known != pair.expected.end()), "find is wrong");
        check(pair.map.has(key) == (found != nullptr), "has differs from find");
        check(!found || found->element().number() == known->second->number,
              "find returns another entry");
    }

    void remove(Pair & pair, Key key) {
        auto const removed = pair.map.remove(key);
        auto const known = pair.expected.find(key);
        check(removed.has_value() == (known != pair.expected.end()), "remove is wrong");
        if (removed) {
            check(removed->element().number() == known->second->number,
                  "remove returns another entry");
            pair.expected.erase(known);
        }
    }

    void start(Walker & walker, unsigned number) {
        Pair const & pair = pairs_[number];
        walker = {pair.map.begin(), number,
                  pair.expected.empty() ? nullptr : pair.expected.begin()->second};
    }

    void stepOn(Walker & walker) {
        if (walker.on) {
            ++walker.it;
            auto const & expected = pairs_[walker.pair].expected;
            auto const next = expected.upper_bound(walker.on->key);
            walker.on = next == expected.end() ? nullptr : next->second;
        }
    }

    void removeAt(Walker & walker) {
        Pair & pair = pairs_[walker.pair];
        auto const removed = pair.map.remove(walker.it);
        auto const known = walker.on ? pair.expected.find(walker.on->key) : pair.expected.end();
        bool const there = known != pair.expected.end() && known->second == walker.on;
        check(removed.has_value() == there, "remove at an iterator is wrong");
        if (there) {
            check(removed->element().number() == walker.on->number,
                  "remove at an iterator returns another entry");
            pair.expected.erase(known);
        }
    }

    /// Many entries in a row: a short input also reaches large collections.
    void fill(Pair & pair) {
        Key const first = key();
        unsigned const count = input_.below(96) * Key::fillFactor;
        for (unsigned i = 0; i < count; ++i) {
            upsert(pair, first.plus(i));
        }
    }

    void wholeMap(Pair & pair) {
        Pair & other = &pair == &pairs_[0] ? pairs_[1] : pairs_[0];
        switch (input_.below(6)) {
        case 0:
            pair.map.clear();
            pair.expected.clear();
            return;
        case 1:
            pair.map.swap(other.map);
            pair.expected.swap(other.expected);
            return;
        case 2:
            pair.map = other.map;
            pair.expected = copyOf(other.expected);
            return;
        case 3: {
            Map moved(std::move(other.map));
            pair.map = std::move(moved);
            pair.expected = std::move(other.expected);
            other.map.clear();
            other.expected.clear();
            return;
        }
        case 4: {
            Map const copy(pair.map);
            check(copy == pair.map, "a copy differs");
            return;
        }
        default: {
            bool same = pair.expected.size() == other.expected.size();
            for (auto x = pair.expected.begin(), y = other.expected.begin();
                 same && x != pair.expected.end(); ++x, ++y) {
                same = x->first == y->first && x->second->number == y->second->number;
            }
            check((pair.map == other.map) == same, "operator== is wrong");
        }
        }
    }

    static Expected copyOf(Expected const & from) {
        Expected copy;
        for (auto const & [key, node] : from) {
            copy.emplace_hint(copy.end(), key, std::make_shared<Node>(*node));
        }
        return copy;
    }

    void checkWalkers() const {
        for (Walker const & walker : walkers_) {
            check(static_cast<bool>(walker.it) == (walker.on != nullptr),
                  "an iterator is at the end, or is not");
            if (walker.on) {
                check(walker.it.key() == walker.on->key, "an iterator is at another key");
                check(walker.it->number() == walker.on->number,
                      "an iterator does not show the entry as it is");
            }
        }
    }

    void checkAll() const {
        for (Pair const & pair : pairs_) {
            check(pair.map.size() == pair.expected.size(), "the size is wrong");
            check(pair.map.empty() == pair.expected.empty(), "empty is wrong");
            auto it = pair.map.begin();
            for (auto const & [key, node] : pair.expected) {
                check(static_cast<bool>(it), "a walk ends early");
                check(it.key() == key && it->number() == node->number, "a walk differs");
                ++it;
            }
            check(it == pair.map.end(), "a walk goes on after the last entry");
        }
        for (Walker const & one : walkers_) {
            for (Walker const & other : walkers_) {
                check((one.it == other.it) == (one.on == other.on),
                      "iterators of one entry differ, or of two entries are equal");
            }
        }
    }

    Input input_;
    unsigned numbers_ = 0;
    std::array<Pair, 2> pairs_;
    std::array<Walker, 4> walkers_;
};

} // namespace fuzz
