#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <vector>

#include "system/containers/orvMap.h"
#include "system/containers/orvSet.h"
#include "system/containers/orvString.h"

namespace
{

/// Walks a subtree and checks the red-black rules, the links and the key order. Returns the black height.
template <typename Node>
int checkSubtree(const Node* node, const Node* nil, const Node* parent, size_t& count)
{
    if (node == nil)
    {
        return 1;
    }
    ++count;
    EXPECT_EQ(parent, node->_parent);
    if (node->_color == Node::RED)
    {
        EXPECT_EQ(Node::BLACK, node->_left->_color);
        EXPECT_EQ(Node::BLACK, node->_right->_color);
    }
    if (node->_left != nil)
    {
        EXPECT_LT(node->_left->_key, node->_key);
    }
    if (node->_right != nil)
    {
        EXPECT_LT(node->_key, node->_right->_key);
    }
    const int left = checkSubtree(node->_left, nil, node, count);
    const int right = checkSubtree(node->_right, nil, node, count);
    EXPECT_EQ(left, right);
    return left + (node->_color == Node::BLACK ? 1 : 0);
}

template <typename Tree>
void checkTree(const Tree& tree)
{
    const auto* nil = tree.getNil();
    EXPECT_EQ(decltype(nil->_color)(false), nil->_color);
    EXPECT_EQ(false, tree.getRoot()->_color);
    size_t count = 0;
    checkSubtree(tree.getRoot(), nil, nil, count);
    EXPECT_EQ(tree.size(), count);
}

using IntMap = orv::OrvMap<int, int>;

TEST(OrvMapTest, EmptyMapHasItsRootOnTheSentinelAndBeginAtEnd)
{
    IntMap map;
    EXPECT_EQ(map.getNil(), map.getRoot());
    EXPECT_TRUE(map.begin() == map.end());
    EXPECT_TRUE(map.find(3) == map.end());
    EXPECT_EQ(0u, map.erase(3));
    map[1] = 2;
    map.clear();
    EXPECT_EQ(map.getNil(), map.getRoot());
    EXPECT_TRUE(map.begin() == map.end());
}

TEST(OrvMapTest, IndexInsertsADefaultAndInsertKeepsTheFirstValue)
{
    orv::OrvMap<orv::OrvString, int> map;
    EXPECT_EQ(0, map["b"]);
    map["b"] = 4;
    auto added = map.insert("a", 1);
    EXPECT_TRUE(added.second);
    auto kept = map.insert("b", 9);
    EXPECT_FALSE(kept.second);
    EXPECT_EQ(4, kept.first->_value);
    EXPECT_EQ(2u, map.size());
    EXPECT_EQ("a", map.begin().getKey());
    EXPECT_EQ(1u, map.count("b"));
}

TEST(OrvMapTest, RandomInsertsAndErasesKeepTheColourRulesAndTheOrder)
{
    std::mt19937 random(7);
    IntMap map;
    std::map<int, int> reference;
    for (int round = 0; round < 4000; ++round)
    {
        const int key = static_cast<int>(random() % 600);
        if (random() % 3 == 0)
        {
            EXPECT_EQ(reference.erase(key), map.erase(key));
        }
        else
        {
            map[key] = round;
            reference[key] = round;
        }
        if (round % 500 == 0)
        {
            checkTree(map);
        }
    }
    checkTree(map);
    ASSERT_EQ(reference.size(), map.size());
    auto expected = reference.begin();
    for (IntMap::const_iterator it = map.begin(); it != map.end(); ++it, ++expected)
    {
        ASSERT_EQ(expected->first, it->_key);
        ASSERT_EQ(expected->second, it.getValue());
    }
}

TEST(OrvMapTest, ErasingWhileIteratingReturnsTheNextKeyInOrder)
{
    IntMap map;
    for (int i = 0; i < 200; ++i)
    {
        map[(i * 37) % 200] = i;
    }
    // Every even key goes; nodes with two children take their successor's content, the iteration must not skip it.
    std::vector<int> seen;
    for (IntMap::iterator it = map.begin(); it != map.end();)
    {
        seen.push_back(it->_key);
        it = (it->_key % 2 == 0) ? map.erase(it) : ++it;
    }
    ASSERT_EQ(200u, seen.size());
    for (int i = 0; i < 200; ++i)
    {
        EXPECT_EQ(i, seen[i]);
    }
    checkTree(map);
    int previous = -1;
    for (const auto& node : map)
    {
        EXPECT_EQ(1, node._key % 2);
        EXPECT_LT(previous, node._key);
        previous = node._key;
    }
}

TEST(OrvMapTest, IteratorsWalkBothWaysAndBoundsFindNeighbours)
{
    IntMap map;
    for (int key : {10, 20, 30})
    {
        map[key] = key;
    }
    IntMap::iterator last = map.end();
    --last;
    EXPECT_EQ(30, last->_key);
    --last;
    EXPECT_EQ(20, last->_key);
    EXPECT_EQ(20, map.lower_bound(20)->_key);
    EXPECT_EQ(30, map.upper_bound(20)->_key);
    EXPECT_EQ(10, map.lower_bound(-5)->_key);
    EXPECT_TRUE(map.upper_bound(30) == map.end());
}

TEST(OrvMapTest, CopyKeepsTheShapeAndIsIndependent)
{
    IntMap map;
    for (int i = 0; i < 50; ++i)
    {
        map[i] = i;
    }
    IntMap copy(map);
    checkTree(copy);
    EXPECT_EQ(map.getRoot()->_key, copy.getRoot()->_key);
    EXPECT_EQ(map.getRoot()->_left->_key, copy.getRoot()->_left->_key);
    copy[7] = -1;
    copy.erase(8);
    EXPECT_EQ(7, map[7]);
    EXPECT_EQ(1u, map.count(8));
    map = copy;
    EXPECT_EQ(49u, map.size());
    checkTree(map);
}

TEST(OrvMapTest, MovedTreeEndsOnItsNewSentinel)
{
    IntMap source;
    for (int i = 0; i < 40; ++i)
    {
        source[i] = i;
    }
    IntMap moved(std::move(source));
    EXPECT_TRUE(source.empty());
    EXPECT_TRUE(source.begin() == source.end());
    checkTree(moved);
    moved.erase(20);
    moved[100] = 1;
    checkTree(moved);
    EXPECT_EQ(40u, moved.size());
}

TEST(OrvSetTest, RandomInsertsAndErasesKeepTheColourRulesAndTheOrder)
{
    std::mt19937 random(11);
    orv::OrvSet<int> set;
    std::set<int> reference;
    for (int round = 0; round < 4000; ++round)
    {
        const int key = static_cast<int>(random() % 500);
        if (random() % 2 == 0)
        {
            EXPECT_EQ(reference.erase(key), set.erase(key));
        }
        else
        {
            EXPECT_EQ(reference.insert(key).second, set.insert(key).second);
        }
    }
    checkTree(set);
    std::vector<int> keys(set.begin(), set.end());
    EXPECT_EQ(std::vector<int>(reference.begin(), reference.end()), keys);
    orv::OrvSet<int> copy(set);
    copy.clear();
    EXPECT_EQ(reference.size(), set.size());
}

} // namespace
