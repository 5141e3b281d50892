#include "Vex/OrderedMap.h"

#include "tests/unit/platform/Vex/MapTests.h"

#include <array>
#include <memory>

/// Random changes with live iterators, checked against a std::map of nodes.
namespace map_tests {

namespace {

/// The expected entries: shared nodes, so that a removed one can be remembered.
struct Node {
    int key;
    bool there = true;
};

class Twin {
public:
    explicit Twin(Vex::U32 seed) : random_(seed) {}

    ~Twin() {
        for (Walker & walker : walkers_) {
            walker = Walker();
        }
        map_.clear();
        EXPECT_EQ(Counted::alive, 0);
    }

    void change(int keys) {
        int const k = static_cast<int>(below(random_, static_cast<Vex::U32>(keys)));
        Walker & walker = anyWalker();
        switch (below(random_, 16)) {
        case 0:
            walker = {map_.begin(), expected_.empty() ? nullptr : expected_.begin()->second};
            break;
        case 1:
            walker = anyWalker();
            break;
        case 2:
            removeAt(walker);
            break;
        case 3:
        case 4:
        case 5:
        case 6:
            step(walker);
            break;
        case 7:
        case 8:
        case 9:
        case 10:
            // Near an iterator, where blocks are divided.
            insert(walker.on ? walker.on->key + 1 - k % 3 : k);
            break;
        case 11:
            remove(walker.on ? walker.on->key + 1 - k % 3 : k);
            break;
        case 12:
        case 13:
            remove(k);
            break;
        default:
            insert(k);
        }
    }

    void clear() {
        map_.clear();
        for (auto & [k, node] : expected_) {
            node->there = false;
        }
        expected_.clear();
    }

    void replaceByCopy() {
        CountedMap copy(map_);
        EXPECT_EQ(copy.size(), map_.size());
        std::vector<int> keys;
        for (Counted const & counted : copy) {
            keys.push_back(counted.number());
        }
        std::vector<int> expected;
        for (auto const & [k, node] : expected_) {
            expected.push_back(k);
        }
        EXPECT_EQ(keys, expected);
    }

    void check() {
        ASSERT_EQ(map_.size(), expected_.size());
        auto it = map_.begin();
        for (auto const & [k, node] : expected_) {
            ASSERT_TRUE(it);
            ASSERT_EQ(it->number(), k);
            ++it;
        }
        ASSERT_FALSE(it);
        std::map<Node const *, int> visitors;
        for (Walker const & walker : walkers_) {
            ASSERT_EQ(static_cast<bool>(walker.it), walker.on != nullptr);
            if (walker.on) {
                ASSERT_EQ(walker.it->number(), walker.on->key);
                ASSERT_EQ(walker.it.key(), walker.on->key);
                visitors[walker.on.get()] += walker.on->there ? 0 : 1;
            }
            for (Walker const & other : walkers_) {
                ASSERT_EQ(walker.it == other.it, walker.on == other.on);
            }
        }
        auto const left = std::count_if(visitors.begin(), visitors.end(),
                                        [](auto const & one) { return one.second > 0; });
        ASSERT_EQ(Counted::alive, static_cast<int>(map_.size()) + static_cast<int>(left));
    }

private:
    using CountedMap = Vex::OrderedMap<CountedSlot>;
    using Expected = std::map<int, std::shared_ptr<Node>>;

    struct Walker {
        CountedMap::Iterator it;
        std::shared_ptr<Node> on;
    };

    Walker & anyWalker() { return walkers_[random_() % walkers_.size()]; }

    void insert(int k) {
        auto const & found =
            map_.findOrInsert(k, [&] { return CountedSlot(Vex::makePtr<Counted>(k)); });
        ASSERT_EQ(found.key(), k);
        expected_.try_emplace(k, std::make_shared<Node>(Node{k}));
    }

    void remove(int k) {
        auto const removed = map_.remove(k);
        auto const known = expected_.find(k);
        ASSERT_EQ(removed.has_value(), known != expected_.end());
        if (removed) {
            ASSERT_EQ(removed->key(), k);
            known->second->there = false;
            expected_.erase(known);
        }
    }

    void removeAt(Walker & walker) {
        auto const removed = map_.remove(walker.it);
        ASSERT_EQ(removed.has_value(), walker.on && walker.on->there);
        if (removed) {
            ASSERT_EQ(removed->key(), walker.on->key);
            walker.on->there = false;
            expected_.erase(walker.on->key);
        }
    }

    void step(Walker & walker) {
        if (walker.on) {
            ++walker.it;
            auto const next = expected_.upper_bound(walker.on->key);
            walker.on = next == expected_.end() ? nullptr : next->second;
        }
    }

    std::mt19937 random_;
    CountedMap map_;
    Expected expected_;
    std::array<Walker, 12> walkers_;
};

void run(Vex::U32 seed, int keys, int changes) {
    Twin twin(seed);
    for (int i = 0; i < changes && !testing::Test::HasFatalFailure(); ++i) {
        twin.change(keys);
        if (i % 7 == 0) {
            twin.check();
        }
        if (i % 2000 == 1999) {
            twin.replaceByCopy();
        }
        if (i % 5000 == 4999) {
            twin.clear();
        }
    }
}

} // namespace

TEST(OrderedMapRandom, AgreesWithAMapOfNodesInASingleBlock) {
    run(1, 12, 40'000);
    run(2, 60, 40'000);
}

TEST(OrderedMapRandom, AgreesWithAMapOfNodesInManyBlocks) {
    run(3, 1000, 40'000);
    run(4, 100'000, 10'000);
}

} // namespace map_tests
