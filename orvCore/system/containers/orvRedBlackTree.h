// orvCore/system/containers/orvRedBlackTree.h
#pragma once

#include <cstddef>
#include <utility>

#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// Red-black tree operations shared by OrvMap and OrvSet, on any node with _key, _parent, _left, _right, _color.
/// Every leaf and the root's parent is the tree's sentinel nil, which is black.
namespace redBlackTree
{

/// A side of a node. Operations that come in mirrored pairs are written once, for a side given at compile time.
enum Side
{
    LEFT,
    RIGHT
};

/// The other side.
constexpr Side opposite(Side side)
{
    return side == LEFT ? RIGHT : LEFT;
}

/// node's child on side S: the link itself, so that it can be changed.
template <Side S, typename Node>
Node*& child(Node* node)
{
    if constexpr (S == LEFT)
    {
        return node->_left;
    }
    else
    {
        return node->_right;
    }
}

/// The last node on side S under node, or nil when node is nil.
template <Side S, typename Node>
Node* outermost(Node* node, Node* nil)
{
    if (node == nil)
    {
        return nil;
    }
    while (child<S>(node) != nil)
    {
        node = child<S>(node);
    }
    return node;
}

/// The leftmost node under node, or nil when node is nil.
template <typename Node>
Node* minimum(Node* node, Node* nil)
{
    return outermost<LEFT>(node, nil);
}

/// The rightmost node under node, or nil when node is nil.
template <typename Node>
Node* maximum(Node* node, Node* nil)
{
    return outermost<RIGHT>(node, nil);
}

/// The neighbour of node in key order towards side S (RIGHT: the next), or nil past the end on that side.
template <Side S, typename Node>
Node* neighbour(Node* node, Node* nil)
{
    if (child<S>(node) != nil)
    {
        return outermost<opposite(S)>(child<S>(node), nil);
    }
    Node* parent = node->_parent;
    while (parent != nil && node == child<S>(parent))
    {
        node = parent;
        parent = parent->_parent;
    }
    return parent;
}

/// The next node in key order, or nil after the last.
template <typename Node>
Node* successor(Node* node, Node* nil)
{
    return neighbour<RIGHT>(node, nil);
}

/// The previous node in key order, or nil before the first.
template <typename Node>
Node* predecessor(Node* node, Node* nil)
{
    return neighbour<LEFT>(node, nil);
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

/// The node holding key, or nil.
template <typename Node, typename K>
Node* find(Node* root, Node* nil, const K& key)
{
    Node* parent = nullptr;
    return findInsertionPoint(root, nil, key, parent);
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

/// Moves x down to side Down under its child from the other side, keeping the key order: rotate<LEFT> turns x's
/// right child into x's parent.
template <Side Down, typename Node>
void rotate(Node*& root, Node* nil, Node* x)
{
    constexpr Side Up = opposite(Down);
    Node* y = child<Up>(x);
    child<Up>(x) = child<Down>(y);
    if (child<Down>(y) != nil)
    {
        child<Down>(y)->_parent = x;
    }
    y->_parent = x->_parent;
    if (x->_parent == nil)
    {
        root = y;
    }
    else if (x == child<Down>(x->_parent))
    {
        child<Down>(x->_parent) = y;
    }
    else
    {
        child<Up>(x->_parent) = y;
    }
    child<Down>(y) = x;
    x->_parent = y;
}

/// One step of the colour repair after linking the red node z under a red parent, which is its own parent's child
/// on side S. Returns the node the repair goes on from.
// Declared inline so that both sides fold into the loop of link, which every insertion runs.
template <Side S, typename Node>
inline Node* repairAfterLink(Node*& root, Node* nil, Node* z)
{
    constexpr Side O = opposite(S);
    Node* grandParent = z->_parent->_parent;
    Node* uncle = child<O>(grandParent);
    if (uncle->_color == Node::RED)
    {
        z->_parent->_color = Node::BLACK;
        uncle->_color = Node::BLACK;
        grandParent->_color = Node::RED;
        return grandParent;
    }
    if (z == child<O>(z->_parent))
    {
        z = z->_parent;
        rotate<S>(root, nil, z);
    }
    z->_parent->_color = Node::BLACK;
    z->_parent->_parent->_color = Node::RED;
    rotate<O>(root, nil, z->_parent->_parent);
    return z;
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
        z = z->_parent == z->_parent->_parent->_left ? repairAfterLink<LEFT>(root, nil, z)
                                                     : repairAfterLink<RIGHT>(root, nil, z);
    }
    root->_color = Node::BLACK;
}

/// One step of the colour repair after a black node left the tree above x, which is its parent's child on side S.
/// Returns the node the repair goes on from.
// Declared inline so that both sides fold into the loop of eraseFixup.
template <Side S, typename Node>
inline Node* repairAfterUnlink(Node*& root, Node* nil, Node* x)
{
    constexpr Side O = opposite(S);
    Node* w = child<O>(x->_parent);
    if (w->_color == Node::RED)
    {
        w->_color = Node::BLACK;
        x->_parent->_color = Node::RED;
        rotate<S>(root, nil, x->_parent);
        w = child<O>(x->_parent);
    }
    if (child<S>(w)->_color == Node::BLACK && child<O>(w)->_color == Node::BLACK)
    {
        w->_color = Node::RED;
        return x->_parent;
    }
    if (child<O>(w)->_color == Node::BLACK)
    {
        child<S>(w)->_color = Node::BLACK;
        w->_color = Node::RED;
        rotate<O>(root, nil, w);
        w = child<O>(x->_parent);
    }
    w->_color = x->_parent->_color;
    x->_parent->_color = Node::BLACK;
    child<O>(w)->_color = Node::BLACK;
    rotate<S>(root, nil, x->_parent);
    return root;
}

/// Restores the colour rules after a black node left the tree above x.
template <typename Node>
void eraseFixup(Node*& root, Node* nil, Node* x)
{
    while (x != root && x->_color == Node::BLACK)
    {
        x = x == x->_parent->_left ? repairAfterUnlink<LEFT>(root, nil, x) : repairAfterUnlink<RIGHT>(root, nil, x);
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

/// The nodes, the sentinel and the count of a tree, with the operations that need nothing of a node but its key and
/// its takeContent; OrvMap and OrvSet are built on it. Nodes come from the global new. One thread per instance.
template <typename K, typename Node>
class Tree
{
public:
    /// The moves and comparisons of a position in key order, shared by the iterators of OrvMap and OrvSet.
    /// Derived holds _node, the node or the sentinel at the end, and answers getTree(), the tree walked.
    template <typename Derived>
    class Position
    {
    public:
        /// Moves to the next key.
        Derived& operator++()
        {
            Derived& self = static_cast<Derived&>(*this);
            const Tree* tree = self.getTree();
            self._node = successor(const_cast<Node*>(self._node), tree->_nil);
            return self;
        }
        /// Moves to the next key.
        Derived operator++(int)
        {
            Derived before = static_cast<Derived&>(*this);
            ++*this;
            return before;
        }
        /// Moves to the previous key; from end() to the last key.
        Derived& operator--()
        {
            Derived& self = static_cast<Derived&>(*this);
            const Tree* tree = self.getTree();
            Node* nil = tree->_nil;
            self._node =
                self._node == nil ? maximum(tree->_root, nil) : predecessor(const_cast<Node*>(self._node), nil);
            return self;
        }
        /// Moves to the previous key.
        Derived operator--(int)
        {
            Derived before = static_cast<Derived&>(*this);
            --*this;
            return before;
        }
        /// Same position.
        bool operator==(const Derived& other) const { return static_cast<const Derived&>(*this)._node == other._node; }
        /// Different positions.
        bool operator!=(const Derived& other) const { return static_cast<const Derived&>(*this)._node != other._node; }
    };

    /// The allocator for the contents of container classes: the one in force.
    static MemoryAllocator* getClassAllocator() { return getDefaultAllocator(); }
    /// The statistics category for the contents of container classes.
    static MemAllocStatId getClassMemoryStatId() { return 0; }

    /// 1 when key is there, else 0.
    size_t count(const K& key) const { return find(_root, _nil, key) != _nil ? 1 : 0; }
    /// Removes key. Returns 1 when it was there, else 0.
    size_t erase(const K& key)
    {
        Node* node = find(_root, _nil, key);
        if (node == _nil)
        {
            return 0;
        }
        eraseNode(node);
        return 1;
    }
    /// Deletes every node.
    void clear()
    {
        internalClear(_root, _nil);
        _root = _nil;
        _size = 0;
    }

    /// Number of keys.
    size_t size() const { return _size; }
    /// True when there is no key.
    bool empty() const { return _size == 0; }

    /// The root, or the sentinel when empty; for walking the tree.
    const Node* getRoot() const { return _root; }
    /// The sentinel that ends every branch.
    const Node* getNil() const { return _nil; }

protected:
    /// An empty tree.
    Tree() = default;
    /// A copy with the same tree shape.
    Tree(const Tree& other) { copyFrom(other); }
    /// Takes the other's nodes without copying; the other is left empty.
    Tree(Tree&& other) noexcept { takeFrom(other); }
    ~Tree() { clear(); }

    /// Replaces the contents with a copy of other, with the same tree shape.
    Tree& operator=(const Tree& other)
    {
        if (this != &other)
        {
            clear();
            copyFrom(other);
        }
        return *this;
    }
    /// Takes the other's nodes; the other is left empty.
    Tree& operator=(Tree&& other) noexcept
    {
        if (this != &other)
        {
            clear();
            takeFrom(other);
        }
        return *this;
    }

    /// The node of key, added with default content when missing; added tells which.
    Node* findOrAdd(const K& key, bool& added)
    {
        Node* parent = nullptr;
        Node* node = findInsertionPoint(_root, _nil, key, parent);
        added = node == _nil;
        if (added)
        {
            node = new Node();
            node->_key = key;
            link(_root, _nil, parent, node);
            ++_size;
        }
        return node;
    }
    /// Removes node, which must not be the sentinel. Returns the node that now holds the next key, or the sentinel.
    Node* eraseAndFindNext(Node* node)
    {
        // With two children the successor's content moves into this node, which then holds the next key.
        Node* next = (node->_left != _nil && node->_right != _nil) ? node : successor(node, _nil);
        eraseNode(node);
        return next;
    }

    /// The top node, or _nil when empty.
    Node* _root = &_nilInstance;
    /// Number of keys.
    size_t _size = 0;
    /// The sentinel: points at _nilInstance.
    Node* _nil = &_nilInstance;
    /// The black sentinel shared by every leaf of this tree.
    Node _nilInstance;

private:
    void eraseNode(Node* node)
    {
        Node* removed = unlink(_root, _nil, node, [](Node* target, Node* source) { target->takeContent(*source); });
        delete removed;
        --_size;
    }
    void copyFrom(const Tree& other)
    {
        _root = copyChildren<Node>(other._root, other._nil, _nil, _nil);
        _size = other._size;
    }
    void takeFrom(Tree& other)
    {
        if (other._root == other._nil)
        {
            return;
        }
        replaceNil(other._root, other._nil, _nil);
        _root = other._root;
        _root->_parent = _nil;
        _size = other._size;
        other._root = other._nil;
        other._size = 0;
    }
};

} // namespace redBlackTree

} // namespace orv
