// orvCore/system/containers/orvDLinkedList.h
#pragma once

#include <cstddef>
#include <new>

#include "system/debug/orvAssert.h"

namespace orv
{

/// A node of DLinkedList: the payload and its two links, null when unlinked.
template <typename T>
struct DLinkedListNode
{
    /// The payload.
    T _value;
    /// The previous node, or null at the head.
    DLinkedListNode* _prev = nullptr;
    /// The next node, or null at the tail.
    DLinkedListNode* _next = nullptr;
};

/// A doubly linked list of caller-owned nodes; it never allocates, so it can serve inside an allocator.
/// Nodes are linked and unlinked, never constructed or destroyed, except by initializeFromArray. One thread per
/// instance.
template <typename T>
class DLinkedList
{
public:
    /// The nodes of the list, owned by it.
    typedef DLinkedListNode<T> Node;

    /// Bytes of a buffer that holds nodeCount nodes, for initializeFromArray.
    static size_t getBufferSizeToAllocate(size_t nodeCount) { return nodeCount * sizeof(Node); }

    /// Builds nodeCount unlinked nodes in the caller's buffer and links them all, in buffer order, into this list,
    /// which must be empty. Does not take ownership of the buffer.
    void initializeFromArray(void* buffer, size_t nodeCount)
    {
        orvAssert(_head == NULL);
        Node* nodes = static_cast<Node*>(buffer);
        for (size_t i = 0; i < nodeCount; ++i)
        {
            new (&nodes[i]) Node();
        }
        // Pushing from the back leaves the first node of the buffer at the head.
        for (size_t i = nodeCount; i-- > 0;)
        {
            pushFront(&nodes[i]);
        }
    }

    /// Links an unlinked node at the head.
    void pushFront(Node* toPush)
    {
        Node* head = _head;
        orvAssert(toPush->_prev == NULL);
        orvAssert(toPush->_next == NULL);
        orvAssert(head == NULL || head->_prev == NULL);
        toPush->_next = head;
        if (head != NULL)
        {
            head->_prev = toPush;
        }
        _head = toPush;
    }
    /// Unlinks the head and returns it, or null when the list is empty.
    Node* popFront()
    {
        Node* head = _head;
        if (head != NULL)
        {
            remove(head);
        }
        return head;
    }
    /// Unlinks a node of this list; its links are null afterwards.
    void remove(Node* toRemove)
    {
        if (toRemove->_prev != NULL)
        {
            toRemove->_prev->_next = toRemove->_next;
        }
        else
        {
            orvAssert(_head == toRemove);
            _head = toRemove->_next;
        }
        if (toRemove->_next != NULL)
        {
            toRemove->_next->_prev = toRemove->_prev;
        }
        toRemove->_prev = NULL;
        toRemove->_next = NULL;
    }

    /// The first node, or null.
    Node* getHead() const { return _head; }
    /// True when no node is linked.
    bool empty() const { return _head == NULL; }
    /// Forgets every node without touching them; for a list whose buffer is going away.
    void reset() { _head = NULL; }

private:
    /// The first node, or null.
    Node* _head = NULL;
};

} // namespace orv
