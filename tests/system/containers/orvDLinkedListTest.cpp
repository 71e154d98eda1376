#include <gtest/gtest.h>

#include <vector>

#include "system/containers/orvDLinkedList.h"

namespace
{

using List = orv::DLinkedList<int>;

std::vector<int> walk(const List& list)
{
    std::vector<int> values;
    const List::Node* previous = nullptr;
    for (const List::Node* node = list.getHead(); node != nullptr; node = node->_next)
    {
        EXPECT_EQ(previous, node->_prev);
        values.push_back(node->_value);
        previous = node;
    }
    return values;
}

class DLinkedListTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        _free.initializeFromArray(_buffer, 5);
        for (int i = 0; i < 5; ++i)
        {
            _buffer[i]._value = i;
        }
    }

    List::Node _buffer[5];
    List _free;
    List _used;
};

TEST_F(DLinkedListTest, ArrayNodesLinkInBufferOrderAndRemoveRelinksTheNeighbours)
{
    EXPECT_EQ((std::vector<int>{0, 1, 2, 3, 4}), walk(_free));
    for (int i = 0; i < 5; ++i)
    {
        _used.pushFront(_free.popFront());
    }
    EXPECT_EQ(nullptr, _free.popFront());
    EXPECT_EQ((std::vector<int>{4, 3, 2, 1, 0}), walk(_used));
    _used.remove(&_buffer[2]);
    _used.remove(&_buffer[4]);
    _used.remove(&_buffer[0]);
    EXPECT_EQ((std::vector<int>{3, 1}), walk(_used));
    // A removed node is unlinked, so it may be pushed again.
    _used.pushFront(&_buffer[0]);
    EXPECT_EQ((std::vector<int>{0, 3, 1}), walk(_used));
}

using DLinkedListDeathTest = DLinkedListTest;

TEST_F(DLinkedListDeathTest, PushingALinkedNodeIsFatal)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(_used.pushFront(&_buffer[1]), "toPush->_prev == NULL");
    EXPECT_DEATH(_used.pushFront(&_buffer[0]), "toPush->_next == NULL");
}

} // namespace
