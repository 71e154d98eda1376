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

TEST(OrvMapTest, IndexInsertsADefaultAndInsertKeepsTheFirstValue)
{
    orv::OrvMap<orv::OrvString, int> map;
    EXPECT_EQ(0, map["b"]);
    map["b"] = 4;
    EXPECT_TRUE(map.insert("a", 1).second);
    auto kept = map.insert("b", 9);
    EXPECT_FALSE(kept.second);
    EXPECT_EQ(4, kept.first->_value);
    EXPECT_EQ("a", map.begin().getKey());
    map.clear();
    EXPECT_EQ(map.getNil(), map.getRoot());
    EXPECT_TRUE(map.begin() == map.end());
}

TEST(OrvMapTest, RandomEditsKeepTheColourRulesAndMatchTheStandardMapInOrderAndBounds)
{
    std::mt19937 random(7);
    IntMap map;
    std::map<int, int> reference;
    const auto mapKey = [&map](IntMap::iterator it) { return it == map.end() ? -1 : it->_key; };
    const auto referenceKey = [&reference](std::map<int, int>::iterator it)
    { return it == reference.end() ? -1 : it->first; };
    for (int round = 0; round < 4000; ++round)
    {
        const int key = static_cast<int>(random() % 600);
        const unsigned int action = random() % 4;
        if (action == 0)
        {
            EXPECT_EQ(reference.erase(key), map.erase(key));
        }
        else if (action == 1 && reference.count(key) != 0)
        {
            // Erasing through an iterator gives the next key, also where a node with two children takes its
            // successor's content.
            ASSERT_EQ(referenceKey(reference.erase(reference.find(key))), mapKey(map.erase(map.find(key))));
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
    // Back from the sentinel, and the bounds of every key.
    IntMap::iterator back = map.end();
    for (auto expectedBack = reference.rbegin(); expectedBack != reference.rend(); ++expectedBack)
    {
        ASSERT_EQ(expectedBack->first, (--back)->_key);
    }
    for (int key = -1; key <= 600; ++key)
    {
        ASSERT_EQ(referenceKey(reference.lower_bound(key)), mapKey(map.lower_bound(key))) << key;
        ASSERT_EQ(referenceKey(reference.upper_bound(key)), mapKey(map.upper_bound(key))) << key;
    }
}

TEST(OrvMapTest, CopiesKeepTheShapeAndMovesEndOnTheirNewSentinel)
{
    IntMap map;
    for (int i = 0; i < 50; ++i)
    {
        map[i] = i;
    }
    IntMap copy(map);
    EXPECT_EQ(map.getRoot()->_left->_key, copy.getRoot()->_left->_key);
    copy[7] = -1;
    copy.erase(8);
    EXPECT_EQ(7, map[7]);
    EXPECT_EQ(1u, map.count(8));
    map = copy;
    checkTree(map);

    IntMap moved(std::move(copy));
    EXPECT_TRUE(copy.begin() == copy.end());
    moved.erase(20);
    moved[100] = 1;
    checkTree(moved);
    EXPECT_EQ(49u, moved.size());
}

TEST(OrvSetTest, RandomInsertsAndErasesKeepTheColourRulesAndMatchTheStandardSet)
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
    EXPECT_EQ(std::vector<int>(reference.begin(), reference.end()), std::vector<int>(set.begin(), set.end()));
}

} // namespace
