// orvCore/system/containers/orvSet.h
#pragma once

#include <cstddef>
#include <iterator>
#include <utility>

#include "system/containers/orvRedBlackTree.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

namespace redBlackTree
{

/// One key of an OrvSet and its tree links.
template <typename K>
class SetNode
{
public:
    /// The colour of a red node.
    static constexpr bool RED = true;
    /// The colour of a black node and of the sentinel.
    static constexpr bool BLACK = false;

    /// Moves source's key into this node and keeps this node's links.
    void takeContent(SetNode& source) { _key = std::move(source._key); }

    /// The key; changing it in place breaks the order.
    K _key = K();
    /// The parent, or the sentinel at the root.
    SetNode* _parent = nullptr;
    /// The left child, or the sentinel.
    SetNode* _left = nullptr;
    /// The right child, or the sentinel.
    SetNode* _right = nullptr;
    /// RED or BLACK.
    bool _color = BLACK;
};

} // namespace redBlackTree

/// An ordered set on the same red-black tree as OrvMap, without values; iteration is in key order by operator<.
/// Nodes come from the global new. One thread per instance.
template <typename K>
class OrvSet : public redBlackTree::Tree<K, redBlackTree::SetNode<K>>
{
    typedef redBlackTree::Tree<K, redBlackTree::SetNode<K>> Base;

public:
    /// One key and its tree links.
    typedef redBlackTree::SetNode<K> OrvSetNode;

    /// A position in key order; dereferences to the key. end() is the sentinel.
    class const_iterator : public Base::template Position<const_iterator>
    {
    public:
        /// The standard iterator types: an iterator points at a const key.
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
        /// The set walked.
        const OrvSet* getTree() const { return _set; }

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

    /// Adds key unless it is there. Returns its position and whether it was added.
    std::pair<iterator, bool> insert(const K& key)
    {
        bool added = false;
        OrvSetNode* node = this->findOrAdd(key, added);
        return std::pair<iterator, bool>(iterator(node, this), added);
    }

    /// The position of key, or end().
    iterator find(const K& key) const { return iterator(redBlackTree::find(_root, _nil, key), this); }
    /// The first key not below key, or end().
    iterator lower_bound(const K& key) const { return iterator(redBlackTree::bound(_root, _nil, key, false), this); }
    /// The first key above key, or end().
    iterator upper_bound(const K& key) const { return iterator(redBlackTree::bound(_root, _nil, key, true), this); }

    /// Removes key. Returns 1 when it was there, else 0.
    using Base::erase;
    /// Removes the key at position, which must not be end(). Returns the position of the key that followed it.
    iterator erase(iterator position)
    {
        return iterator(this->eraseAndFindNext(const_cast<OrvSetNode*>(position._node)), this);
    }

    /// The smallest key, or end() when empty.
    iterator begin() const { return iterator(redBlackTree::minimum(_root, _nil), this); }
    /// Past the last key.
    iterator end() const { return iterator(_nil, this); }

private:
    using Base::_nil;
    using Base::_root;
};

} // namespace orv
