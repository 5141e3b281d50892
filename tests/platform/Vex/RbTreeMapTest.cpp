#include "Vex/RbTreeMap.h"

#include "tests/platform/Vex/MapTests.h"

namespace map_tests {

using OrderedMap = Vex::RbTreeMap<EntrySlot>;
INSTANTIATE_TYPED_TEST_SUITE_P(RbTreeMap, MapTest, OrderedMap);

TEST(RbTreeMap, WalksInAscendingKeyOrderWhateverTheOrderOfFilling) {
    for (bool const ascending : {true, false}) {
        OrderedMap map;
        for (Vex::U32 i = 0; i < 1000; ++i) {
            map.upsert(slot(ascending ? i : 999 - i));
        }
        Vex::U32 next = 0;
        for (Entry const & entry : map) {
            EXPECT_EQ(entry.key.value(), next++);
        }
        EXPECT_EQ(next, 1000U);
    }
}

TEST(RbTreeMap, NodesLiveUntilCollectionAndIteratorsLetThemGo) {
    testNodeLifetime<Vex::RbTreeMap<CountedSlot>>();
}

namespace {

/// The number of black nodes on every way down, or -1 where the tree breaks its rules.
int blackHeight(Vex::RbTreeNode const * node, Vex::RbTreeNode const * parent) {
    if (!node) {
        return 0;
    }
    bool const linked = node->parent == parent;
    bool const redUnderRed = parent && parent->red && node->red;
    int const left = blackHeight(node->left, node);
    int const right = blackHeight(node->right, node);
    if (!linked || redUnderRed || left < 0 || left != right) {
        return -1;
    }
    return left + (node->red ? 0 : 1);
}

} // namespace

TEST(RbTree, StaysBalancedAndLinkedUnderRandomChanges) {
    std::mt19937 random(99);
    std::vector<Vex::RbTreeNode> nodes(512);
    std::vector<bool> inTree(nodes.size());
    Vex::RbTree tree;
    auto const insert = [&](Vex::RbTreeNode & node) {
        Vex::RbTreeNode * parent = nullptr;
        Vex::RbTreeNode * at = tree.root();
        while (at) {
            parent = at;
            at = &node < at ? at->left : at->right;
        }
        tree.insert(&node, parent, parent && &node < parent);
    };
    for (int i = 0; i < 20'000; ++i) {
        std::size_t const n = random() % nodes.size();
        if (inTree[n]) {
            tree.erase(&nodes[n]);
        } else {
            insert(nodes[n]);
        }
        inTree[n] = !inTree[n];
        if (i % 50 == 0) {
            ASSERT_GE(blackHeight(tree.root(), nullptr), 0);
            Vex::RbTreeNode const * at = tree.first();
            Vex::RbTreeNode const * last = nullptr;
            for (std::size_t k = 0; k < nodes.size(); ++k) {
                if (inTree[k]) {
                    ASSERT_EQ(at, &nodes[k]);
                    last = at;
                    at = Vex::RbTree::next(at);
                }
            }
            ASSERT_EQ(at, nullptr);
            ASSERT_EQ(tree.last(), last);
        }
    }
}

} // namespace map_tests
