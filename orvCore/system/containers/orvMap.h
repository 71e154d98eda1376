// orvCore/system/containers/orvMap.h
#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// Red-black tree operations shared by OrvMap and OrvSet, on any node with _key, _parent, _left, _right, _color.
/// Every leaf and the root's parent is the tree's sentinel nil, which is black.
namespace redBlackTree
{

/// The leftmost node under node, or nil when node is nil.
template <typename Node>
Node* minimum(Node* node, Node* nil)
{
    if (node == nil)
    {
        return nil;
    }
    while (node->_left != nil)
    {
        node = node->_left;
    }
    return node;
}

/// The rightmost node under node, or nil when node is nil.
template <typename Node>
Node* maximum(Node* node, Node* nil)
{
    if (node == nil)
    {
        return nil;
    }
    while (node->_right != nil)
    {
        node = node->_right;
    }
    return node;
}

/// The next node in key order, or nil after the last.
template <typename Node>
Node* successor(Node* node, Node* nil)
{
    if (node->_right != nil)
    {
        return minimum(node->_right, nil);
    }
    Node* parent = node->_parent;
    while (parent != nil && node == parent->_right)
    {
        node = parent;
        parent = parent->_parent;
    }
    return parent;
}

/// The previous node in key order, or nil before the first.
template <typename Node>
Node* predecessor(Node* node, Node* nil)
{
    if (node->_left != nil)
    {
        return maximum(node->_left, nil);
    }
    Node* parent = node->_parent;
    while (parent != nil && node == parent->_left)
    {
        node = parent;
        parent = parent->_parent;
    }
    return parent;
}

/// The node holding key, or nil.
template <typename Node, typename K>
Node* find(Node* root, Node* nil, const K& key)
{
    Node* node = root;
    while (node != nil)
    {
        if (key < node->_key)
        {
            node = node->_left;
        }
        else if (node->_key < key)
        {
            node = node->_right;
        }
        else
        {
            return node;
        }
    }
    return nil;
}

/// The first node whose key is not below key (upper false) or above key (upper true), or nil.
template <typename Node, typename K>
Node* bound(Node* root, Node* nil, const K& key, bool upper)
{
    Node* node = root;
    Node* result = nil;
    while (node != nil)
    {
        const bool goLeft = upper ? key < node->_key : !(node->_key < key);
        if (goLeft)
        {
            result = node;
            node = node->_left;
        }
        else
        {
            node = node->_right;
        }
    }
    return result;
}

/// Turns x's right child into x's parent, keeping the key order.
template <typename Node>
void rotateLeft(Node*& root, Node* nil, Node* x)
{
    Node* y = x->_right;
    x->_right = y->_left;
    if (y->_left != nil)
    {
        y->_left->_parent = x;
    }
    y->_parent = x->_parent;
    if (x->_parent == nil)
    {
        root = y;
    }
    else if (x == x->_parent->_left)
    {
        x->_parent->_left = y;
    }
    else
    {
        x->_parent->_right = y;
    }
    y->_left = x;
    x->_parent = y;
}

/// Turns x's left child into x's parent, keeping the key order.
template <typename Node>
void rotateRight(Node*& root, Node* nil, Node* x)
{
    Node* y = x->_left;
    x->_left = y->_right;
    if (y->_right != nil)
    {
        y->_right->_parent = x;
    }
    y->_parent = x->_parent;
    if (x->_parent == nil)
    {
        root = y;
    }
    else if (x == x->_parent->_right)
    {
        x->_parent->_right = y;
    }
    else
    {
        x->_parent->_left = y;
    }
    y->_right = x;
    x->_parent = y;
}

/// Finds where key belongs. Returns the node holding it, or nil with parent set to the node to hang it under.
template <typename Node, typename K>
Node* findInsertionPoint(Node* root, Node* nil, const K& key, Node*& parent)
{
    parent = nil;
    Node* node = root;
    while (node != nil)
    {
        parent = node;
        if (key < node->_key)
        {
            node = node->_left;
        }
        else if (node->_key < key)
        {
            node = node->_right;
        }
        else
        {
            return node;
        }
    }
    return nil;
}

/// Hangs a red node under parent, on the side its key asks, and restores the colour rules around it.
template <typename Node>
void link(Node*& root, Node* nil, Node* parent, Node* z)
{
    z->_parent = parent;
    z->_left = nil;
    z->_right = nil;
    z->_color = Node::RED;
    if (parent == nil)
    {
        root = z;
    }
    else if (z->_key < parent->_key)
    {
        parent->_left = z;
    }
    else
    {
        parent->_right = z;
    }

    while (z->_parent->_color == Node::RED)
    {
        Node* grandParent = z->_parent->_parent;
        if (z->_parent == grandParent->_left)
        {
            Node* uncle = grandParent->_right;
            if (uncle->_color == Node::RED)
            {
                z->_parent->_color = Node::BLACK;
                uncle->_color = Node::BLACK;
                grandParent->_color = Node::RED;
                z = grandParent;
            }
            else
            {
                if (z == z->_parent->_right)
                {
                    z = z->_parent;
                    rotateLeft(root, nil, z);
                }
                z->_parent->_color = Node::BLACK;
                z->_parent->_parent->_color = Node::RED;
                rotateRight(root, nil, z->_parent->_parent);
            }
        }
        else
        {
            Node* uncle = grandParent->_left;
            if (uncle->_color == Node::RED)
            {
                z->_parent->_color = Node::BLACK;
                uncle->_color = Node::BLACK;
                grandParent->_color = Node::RED;
                z = grandParent;
            }
            else
            {
                if (z == z->_parent->_left)
                {
                    z = z->_parent;
                    rotateRight(root, nil, z);
                }
                z->_parent->_color = Node::BLACK;
                z->_parent->_parent->_color = Node::RED;
                rotateLeft(root, nil, z->_parent->_parent);
            }
        }
    }
    root->_color = Node::BLACK;
}

/// Restores the colour rules after a black node left the tree above x.
template <typename Node>
void eraseFixup(Node*& root, Node* nil, Node* x)
{
    while (x != root && x->_color == Node::BLACK)
    {
        if (x == x->_parent->_left)
        {
            Node* w = x->_parent->_right;
            if (w->_color == Node::RED)
            {
                w->_color = Node::BLACK;
                x->_parent->_color = Node::RED;
                rotateLeft(root, nil, x->_parent);
                w = x->_parent->_right;
            }
            if (w->_left->_color == Node::BLACK && w->_right->_color == Node::BLACK)
            {
                w->_color = Node::RED;
                x = x->_parent;
            }
            else
            {
                if (w->_right->_color == Node::BLACK)
                {
                    w->_left->_color = Node::BLACK;
                    w->_color = Node::RED;
                    rotateRight(root, nil, w);
                    w = x->_parent->_right;
                }
                w->_color = x->_parent->_color;
                x->_parent->_color = Node::BLACK;
                w->_right->_color = Node::BLACK;
                rotateLeft(root, nil, x->_parent);
                x = root;
            }
        }
        else
        {
            Node* w = x->_parent->_left;
            if (w->_color == Node::RED)
            {
                w->_color = Node::BLACK;
                x->_parent->_color = Node::RED;
                rotateRight(root, nil, x->_parent);
                w = x->_parent->_left;
            }
            if (w->_right->_color == Node::BLACK && w->_left->_color == Node::BLACK)
            {
                w->_color = Node::RED;
                x = x->_parent;
            }
            else
            {
                if (w->_left->_color == Node::BLACK)
                {
                    w->_right->_color = Node::BLACK;
                    w->_color = Node::RED;
                    rotateLeft(root, nil, w);
                    w = x->_parent->_left;
                }
                w->_color = x->_parent->_color;
                x->_parent->_color = Node::BLACK;
                w->_left->_color = Node::BLACK;
                rotateRight(root, nil, x->_parent);
                x = root;
            }
        }
    }
    x->_color = Node::BLACK;
}

/// Takes z's content out of the tree and returns the node to delete: z itself, or, when z has two children,
/// its in-order successor, whose content the caller then moves into z with moveContent.
template <typename Node, typename MoveContent>
Node* unlink(Node*& root, Node* nil, Node* z, MoveContent moveContent)
{
    Node* y = (z->_left == nil || z->_right == nil) ? z : minimum(z->_right, nil);
    Node* x = y->_left != nil ? y->_left : y->_right;
    // x may be nil: its parent is set on purpose, the fix-up climbs from it.
    x->_parent = y->_parent;
    if (y->_parent == nil)
    {
        root = x;
    }
    else if (y == y->_parent->_left)
    {
        y->_parent->_left = x;
    }
    else
    {
        y->_parent->_right = x;
    }
    if (y != z)
    {
        moveContent(z, y);
    }
    if (y->_color == Node::BLACK)
    {
        eraseFixup(root, nil, x);
    }
    nil->_parent = nil;
    return y;
}

/// Deletes every node under node, children first.
template <typename Node>
void internalClear(Node* node, Node* nil)
{
    // Recursion on the left, a loop on the right: the depth stays within the tree height.
    while (node != nil)
    {
        internalClear(node->_left, nil);
        Node* right = node->_right;
        delete node;
        node = right;
    }
}

/// A new node per node of source, with the same shape and colours, hung under parent.
template <typename Node>
Node* copyChildren(const Node* source, const Node* sourceNil, Node* parent, Node* nil)
{
    if (source == sourceNil)
    {
        return nil;
    }
    Node* node = new Node(*source);
    node->_parent = parent;
    node->_left = copyChildren(source->_left, sourceNil, node, nil);
    node->_right = copyChildren(source->_right, sourceNil, node, nil);
    return node;
}

/// Replaces every link to oldNil under node by nil; used when a tree changes owner.
template <typename Node>
void replaceNil(Node* node, Node* oldNil, Node* nil)
{
    while (node != oldNil)
    {
        replaceNil(node->_left, oldNil, nil);
        if (node->_left == oldNil)
        {
            node->_left = nil;
        }
        Node* right = node->_right;
        if (right == oldNil)
        {
            node->_right = nil;
        }
        node = right;
    }
}

} // namespace redBlackTree

/// An ordered map on a red-black tree with a shared black sentinel; iteration is in key order by operator<.
/// Nodes come from the global new. One thread per instance.
template <typename K, typename V>
class OrvMap
{
public:
    /// One entry: the value, then the key, then the tree links.
    class OrvMapNode
    {
    public:
        /// The colour of a red node.
        static constexpr bool RED = true;
        /// The colour of a black node and of the sentinel.
        static constexpr bool BLACK = false;

        /// The mapped value.
        V _value = V();
        /// The key; changing it in place breaks the order.
        K _key = K();
        /// The parent, or the sentinel at the root.
        OrvMapNode* _parent = nullptr;
        /// The left child, or the sentinel.
        OrvMapNode* _left = nullptr;
        /// The right child, or the sentinel.
        OrvMapNode* _right = nullptr;
        /// RED or BLACK.
        bool _color = BLACK;
    };

    /// A position in key order; dereferences to the node. end() is the sentinel.
    template <bool IsConst>
    class IteratorBase
    {
    public:
        typedef typename std::conditional<IsConst, const OrvMapNode, OrvMapNode>::type NodeType;
        typedef typename std::conditional<IsConst, const OrvMap, OrvMap>::type MapType;
        typedef std::bidirectional_iterator_tag iterator_category;
        typedef NodeType value_type;
        typedef ptrdiff_t difference_type;
        typedef NodeType* pointer;
        typedef NodeType& reference;

        /// A position in no map.
        IteratorBase() = default;
        /// The position of node in map; node may be the map's sentinel.
        IteratorBase(NodeType* node, MapType* map) : _node(node), _map(map) {}
        /// A mutable position converts to a const one.
        template <bool OtherConst, typename = typename std::enable_if<IsConst && !OtherConst>::type>
        IteratorBase(const IteratorBase<OtherConst>& other) : _node(other._node), _map(other._map)
        {
        }

        /// The entry.
        NodeType& operator*() const { return *_node; }
        /// The entry, for it->_key and it->_value.
        NodeType* operator->() const { return _node; }
        /// The entry's key.
        const K& getKey() const { return _node->_key; }
        /// The entry's value.
        const V& getValue() const { return _node->_value; }
        /// The entry's value, mutable through a mutable position.
        typename std::conditional<IsConst, const V&, V&>::type touchValue() const { return _node->_value; }

        /// Moves to the next key.
        IteratorBase& operator++()
        {
            _node = redBlackTree::successor(const_cast<OrvMapNode*>(_node), _map->_nil);
            return *this;
        }
        /// Moves to the next key.
        IteratorBase operator++(int)
        {
            IteratorBase before = *this;
            ++*this;
            return before;
        }
        /// Moves to the previous key; from end() to the last entry.
        IteratorBase& operator--()
        {
            OrvMapNode* nil = _map->_nil;
            _node = _node == nil ? redBlackTree::maximum(_map->_root, nil)
                                 : redBlackTree::predecessor(const_cast<OrvMapNode*>(_node), nil);
            return *this;
        }
        /// Moves to the previous key.
        IteratorBase operator--(int)
        {
            IteratorBase before = *this;
            --*this;
            return before;
        }
        /// Same position.
        bool operator==(const IteratorBase& other) const { return _node == other._node; }
        /// Different positions.
        bool operator!=(const IteratorBase& other) const { return _node != other._node; }

        /// The node, or the map's sentinel at the end.
        NodeType* _node = nullptr;
        /// The map walked.
        MapType* _map = nullptr;
    };

    typedef IteratorBase<false> iterator;
    typedef IteratorBase<true> const_iterator;

    /// An empty map; the allocator arguments are accepted and dropped.
    OrvMap() = default;
    /// The same; the allocator arguments are accepted and dropped.
    explicit OrvMap(MemoryAllocator* allocator, MemAllocStatId statId = 0)
    {
        (void)allocator;
        (void)statId;
    }
    /// A copy with the same tree shape.
    OrvMap(const OrvMap& other) { copyFrom(other); }
    /// Takes the other's nodes without copying; the other is left empty.
    OrvMap(OrvMap&& other) noexcept { takeFrom(other); }
    ~OrvMap() { clear(); }

    /// Replaces the contents with a copy of other, with the same tree shape.
    OrvMap& operator=(const OrvMap& other)
    {
        if (this != &other)
        {
            clear();
            copyFrom(other);
        }
        return *this;
    }
    /// Takes the other's nodes; the other is left empty.
    OrvMap& operator=(OrvMap&& other) noexcept
    {
        if (this != &other)
        {
            clear();
            takeFrom(other);
        }
        return *this;
    }

    /// The allocator for the contents of container classes: the one in force.
    static MemoryAllocator* getClassAllocator() { return getDefaultAllocator(); }
    /// The statistics category for the contents of container classes.
    static MemAllocStatId getClassMemoryStatId() { return 0; }

    /// The value for key, inserted default-constructed when missing.
    V& operator[](const K& key)
    {
        OrvMapNode* parent = nullptr;
        OrvMapNode* node = redBlackTree::findInsertionPoint(_root, _nil, key, parent);
        if (node == _nil)
        {
            node = new OrvMapNode();
            node->_key = key;
            redBlackTree::link(_root, _nil, parent, node);
            ++_size;
        }
        return node->_value;
    }

    /// Adds key with value unless key is there. Returns the entry of key and whether it was added.
    std::pair<iterator, bool> insert(const K& key, const V& value)
    {
        OrvMapNode* parent = nullptr;
        OrvMapNode* node = redBlackTree::findInsertionPoint(_root, _nil, key, parent);
        if (node != _nil)
        {
            return std::pair<iterator, bool>(iterator(node, this), false);
        }
        node = new OrvMapNode();
        node->_key = key;
        node->_value = value;
        redBlackTree::link(_root, _nil, parent, node);
        ++_size;
        return std::pair<iterator, bool>(iterator(node, this), true);
    }

    /// The entry of key, or end().
    iterator find(const K& key) { return iterator(redBlackTree::find(_root, _nil, key), this); }
    /// The entry of key, or end().
    const_iterator find(const K& key) const { return const_iterator(redBlackTree::find(_root, _nil, key), this); }
    /// 1 when key is there, else 0.
    size_t count(const K& key) const { return redBlackTree::find(_root, _nil, key) != _nil ? 1 : 0; }
    /// The first entry whose key is not below key, or end().
    iterator lower_bound(const K& key) { return iterator(redBlackTree::bound(_root, _nil, key, false), this); }
    /// The first entry whose key is not below key, or end().
    const_iterator lower_bound(const K& key) const
    {
        return const_iterator(redBlackTree::bound(_root, _nil, key, false), this);
    }
    /// The first entry whose key is above key, or end().
    iterator upper_bound(const K& key) { return iterator(redBlackTree::bound(_root, _nil, key, true), this); }
    /// The first entry whose key is above key, or end().
    const_iterator upper_bound(const K& key) const
    {
        return const_iterator(redBlackTree::bound(_root, _nil, key, true), this);
    }

    /// Removes key. Returns 1 when it was there, else 0.
    size_t erase(const K& key)
    {
        OrvMapNode* node = redBlackTree::find(_root, _nil, key);
        if (node == _nil)
        {
            return 0;
        }
        eraseNode(node);
        return 1;
    }
    /// Removes the entry at position, which must not be end(). Returns the entry that followed it.
    iterator erase(iterator position)
    {
        OrvMapNode* node = position._node;
        // With two children the successor's content moves into this node, which then is the next entry.
        OrvMapNode* next = (node->_left != _nil && node->_right != _nil) ? node : redBlackTree::successor(node, _nil);
        eraseNode(node);
        return iterator(next, this);
    }
    /// Deletes every node.
    void clear()
    {
        redBlackTree::internalClear(_root, _nil);
        _root = _nil;
        _size = 0;
    }

    /// Number of entries.
    size_t size() const { return _size; }
    /// True when there is no entry.
    bool empty() const { return _size == 0; }

    /// The entry of the smallest key, or end() when empty.
    iterator begin() { return iterator(redBlackTree::minimum(_root, _nil), this); }
    /// The entry of the smallest key, or end() when empty.
    const_iterator begin() const { return const_iterator(redBlackTree::minimum(_root, _nil), this); }
    /// Past the last entry.
    iterator end() { return iterator(_nil, this); }
    /// Past the last entry.
    const_iterator end() const { return const_iterator(_nil, this); }

    /// The root, or the sentinel when empty; for walking the tree.
    const OrvMapNode* getRoot() const { return _root; }
    /// The sentinel that ends every branch.
    const OrvMapNode* getNil() const { return _nil; }

private:
    void eraseNode(OrvMapNode* node)
    {
        OrvMapNode* removed = redBlackTree::unlink(_root, _nil, node,
                                                   [](OrvMapNode* target, OrvMapNode* source)
                                                   {
                                                       target->_key = std::move(source->_key);
                                                       target->_value = std::move(source->_value);
                                                   });
        delete removed;
        --_size;
    }
    void copyFrom(const OrvMap& other)
    {
        _root = redBlackTree::copyChildren<OrvMapNode>(other._root, other._nil, _nil, _nil);
        _size = other._size;
    }
    void takeFrom(OrvMap& other)
    {
        if (other._root == other._nil)
        {
            return;
        }
        redBlackTree::replaceNil(other._root, other._nil, _nil);
        _root = other._root;
        _root->_parent = _nil;
        _size = other._size;
        other._root = other._nil;
        other._size = 0;
    }

    /// The top node, or _nil when empty.
    OrvMapNode* _root = &_nilInstance;
    /// Number of entries.
    size_t _size = 0;
    /// The sentinel: points at _nilInstance.
    OrvMapNode* _nil = &_nilInstance;
    /// The black sentinel shared by every leaf of this map.
    OrvMapNode _nilInstance;
};

} // namespace orv
