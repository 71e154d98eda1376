// orvCore/system/containers/orvSet.h
#pragma once

#include <cstddef>
#include <iterator>
#include <utility>

#include "system/containers/orvMap.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// An ordered set on the same red-black tree as OrvMap, without values; iteration is in key order by operator<.
/// Nodes come from the global new. One thread per instance.
template <typename K>
class OrvSet
{
public:
    /// One key and its tree links.
    class OrvSetNode
    {
    public:
        /// The colour of a red node.
        static constexpr bool RED = true;
        /// The colour of a black node and of the sentinel.
        static constexpr bool BLACK = false;

        /// The key; changing it in place breaks the order.
        K _key = K();
        /// The parent, or the sentinel at the root.
        OrvSetNode* _parent = nullptr;
        /// The left child, or the sentinel.
        OrvSetNode* _left = nullptr;
        /// The right child, or the sentinel.
        OrvSetNode* _right = nullptr;
        /// RED or BLACK.
        bool _color = BLACK;
    };

    /// A position in key order; dereferences to the key. end() is the sentinel.
    class const_iterator
    {
    public:
        typedef std::bidirectional_iterator_tag iterator_category;
        typedef K value_type;
        typedef ptrdiff_t difference_type;
        typedef const K* pointer;
        typedef const K& reference;

        /// A position in no set.
        const_iterator() = default;
        /// The position of node in set; node may be the set's sentinel.
        const_iterator(const OrvSetNode* node, const OrvSet* set) : _node(node), _set(set) {}

        /// The key.
        const K& operator*() const { return _node->_key; }
        /// The key.
        const K* operator->() const { return &_node->_key; }

        /// Moves to the next key.
        const_iterator& operator++()
        {
            _node = redBlackTree::successor(const_cast<OrvSetNode*>(_node), _set->_nil);
            return *this;
        }
        /// Moves to the next key.
        const_iterator operator++(int)
        {
            const_iterator before = *this;
            ++*this;
            return before;
        }
        /// Moves to the previous key; from end() to the last key.
        const_iterator& operator--()
        {
            OrvSetNode* nil = _set->_nil;
            _node = _node == nil ? redBlackTree::maximum(_set->_root, nil)
                                 : redBlackTree::predecessor(const_cast<OrvSetNode*>(_node), nil);
            return *this;
        }
        /// Moves to the previous key.
        const_iterator operator--(int)
        {
            const_iterator before = *this;
            --*this;
            return before;
        }
        /// Same position.
        bool operator==(const const_iterator& other) const { return _node == other._node; }
        /// Different positions.
        bool operator!=(const const_iterator& other) const { return _node != other._node; }

        /// The node, or the set's sentinel at the end.
        const OrvSetNode* _node = nullptr;
        /// The set walked.
        const OrvSet* _set = nullptr;
    };

    // Keys are never changed in place, so both kinds of position are read-only.
    typedef const_iterator iterator;

    /// An empty set; the allocator arguments are accepted and dropped.
    OrvSet() = default;
    /// The same; the allocator arguments are accepted and dropped.
    explicit OrvSet(MemoryAllocator* allocator, MemAllocStatId statId = 0)
    {
        (void)allocator;
        (void)statId;
    }
    /// A copy with the same tree shape.
    OrvSet(const OrvSet& other) { copyFrom(other); }
    /// Takes the other's nodes without copying; the other is left empty.
    OrvSet(OrvSet&& other) noexcept { takeFrom(other); }
    ~OrvSet() { clear(); }

    /// Replaces the contents with a copy of other, with the same tree shape.
    OrvSet& operator=(const OrvSet& other)
    {
        if (this != &other)
        {
            clear();
            copyFrom(other);
        }
        return *this;
    }
    /// Takes the other's nodes; the other is left empty.
    OrvSet& operator=(OrvSet&& other) noexcept
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

    /// Adds key unless it is there. Returns its position and whether it was added.
    std::pair<iterator, bool> insert(const K& key)
    {
        OrvSetNode* parent = nullptr;
        OrvSetNode* node = redBlackTree::findInsertionPoint(_root, _nil, key, parent);
        if (node != _nil)
        {
            return std::pair<iterator, bool>(iterator(node, this), false);
        }
        node = new OrvSetNode();
        node->_key = key;
        redBlackTree::link(_root, _nil, parent, node);
        ++_size;
        return std::pair<iterator, bool>(iterator(node, this), true);
    }

    /// The position of key, or end().
    iterator find(const K& key) const { return iterator(redBlackTree::find(_root, _nil, key), this); }
    /// 1 when key is there, else 0.
    size_t count(const K& key) const { return redBlackTree::find(_root, _nil, key) != _nil ? 1 : 0; }
    /// The first key not below key, or end().
    iterator lower_bound(const K& key) const { return iterator(redBlackTree::bound(_root, _nil, key, false), this); }
    /// The first key above key, or end().
    iterator upper_bound(const K& key) const { return iterator(redBlackTree::bound(_root, _nil, key, true), this); }

    /// Removes key. Returns 1 when it was there, else 0.
    size_t erase(const K& key)
    {
        OrvSetNode* node = redBlackTree::find(_root, _nil, key);
        if (node == _nil)
        {
            return 0;
        }
        eraseNode(node);
        return 1;
    }
    /// Removes the key at position, which must not be end(). Returns the position of the key that followed it.
    iterator erase(iterator position)
    {
        OrvSetNode* node = const_cast<OrvSetNode*>(position._node);
        // With two children the successor's key moves into this node, which then is the next position.
        OrvSetNode* next = (node->_left != _nil && node->_right != _nil) ? node : redBlackTree::successor(node, _nil);
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

    /// Number of keys.
    size_t size() const { return _size; }
    /// True when there is no key.
    bool empty() const { return _size == 0; }

    /// The smallest key, or end() when empty.
    iterator begin() const { return iterator(redBlackTree::minimum(_root, _nil), this); }
    /// Past the last key.
    iterator end() const { return iterator(_nil, this); }

    /// The root, or the sentinel when empty; for walking the tree.
    const OrvSetNode* getRoot() const { return _root; }
    /// The sentinel that ends every branch.
    const OrvSetNode* getNil() const { return _nil; }

private:
    void eraseNode(OrvSetNode* node)
    {
        OrvSetNode* removed = redBlackTree::unlink(
            _root, _nil, node, [](OrvSetNode* target, OrvSetNode* source) { target->_key = std::move(source->_key); });
        delete removed;
        --_size;
    }
    void copyFrom(const OrvSet& other)
    {
        _root = redBlackTree::copyChildren<OrvSetNode>(other._root, other._nil, _nil, _nil);
        _size = other._size;
    }
    void takeFrom(OrvSet& other)
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
    OrvSetNode* _root = &_nilInstance;
    /// Number of keys.
    size_t _size = 0;
    /// The sentinel: points at _nilInstance.
    OrvSetNode* _nil = &_nilInstance;
    /// The black sentinel shared by every leaf of this set.
    OrvSetNode _nilInstance;
};

} // namespace orv
