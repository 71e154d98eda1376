// orvCore/system/containers/orvMap.h
#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

#include "system/containers/orvRedBlackTree.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

namespace redBlackTree
{

/// One entry of an OrvMap: the value, then the key, then the tree links.
template <typename K, typename V>
class MapNode
{
public:
    /// The colour of a red node.
    static constexpr bool RED = true;
    /// The colour of a black node and of the sentinel.
    static constexpr bool BLACK = false;

    /// Moves source's key and value into this node and keeps this node's links.
    void takeContent(MapNode& source)
    {
        _key = std::move(source._key);
        _value = std::move(source._value);
    }

    /// The mapped value.
    V _value = V();
    /// The key; changing it in place breaks the order.
    K _key = K();
    /// The parent, or the sentinel at the root.
    MapNode* _parent = nullptr;
    /// The left child, or the sentinel.
    MapNode* _left = nullptr;
    /// The right child, or the sentinel.
    MapNode* _right = nullptr;
    /// RED or BLACK.
    bool _color = BLACK;
};

} // namespace redBlackTree

/// An ordered map on a red-black tree with a shared black sentinel; iteration is in key order by operator<.
/// Nodes come from the global new. One thread per instance.
template <typename K, typename V>
class OrvMap : public redBlackTree::Tree<K, redBlackTree::MapNode<K, V>>
{
    typedef redBlackTree::Tree<K, redBlackTree::MapNode<K, V>> Base;

public:
    /// One entry: the value, then the key, then the tree links.
    typedef redBlackTree::MapNode<K, V> OrvMapNode;

    /// A position in key order; dereferences to the node. end() is the sentinel.
    template <bool IsConst>
    class IteratorBase : public Base::template Position<IteratorBase<IsConst>>
    {
    public:
        /// The standard iterator types: an iterator points at a node, with its key and value.
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
        /// The map walked.
        MapType* getTree() const { return _map; }

        /// The node, or the map's sentinel at the end.
        NodeType* _node = nullptr;
        /// The map walked.
        MapType* _map = nullptr;
    };

    /// Iterators in ascending key order, mutable and const.
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

    /// The value for key, inserted default-constructed when missing.
    V& operator[](const K& key)
    {
        bool added = false;
        return this->findOrAdd(key, added)->_value;
    }

    /// Adds key with value unless key is there. Returns the entry of key and whether it was added.
    std::pair<iterator, bool> insert(const K& key, const V& value)
    {
        bool added = false;
        OrvMapNode* node = this->findOrAdd(key, added);
        if (added)
        {
            node->_value = value;
        }
        return std::pair<iterator, bool>(iterator(node, this), added);
    }

    /// The entry of key, or end().
    iterator find(const K& key) { return iterator(redBlackTree::find(_root, _nil, key), this); }
    /// The entry of key, or end().
    const_iterator find(const K& key) const { return const_iterator(redBlackTree::find(_root, _nil, key), this); }
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
    using Base::erase;
    /// Removes the entry at position, which must not be end(). Returns the entry that followed it.
    iterator erase(iterator position) { return iterator(this->eraseAndFindNext(position._node), this); }

    /// The entry of the smallest key, or end() when empty.
    iterator begin() { return iterator(redBlackTree::minimum(_root, _nil), this); }
    /// The entry of the smallest key, or end() when empty.
    const_iterator begin() const { return const_iterator(redBlackTree::minimum(_root, _nil), this); }
    /// Past the last entry.
    iterator end() { return iterator(_nil, this); }
    /// Past the last entry.
    const_iterator end() const { return const_iterator(_nil, this); }

private:
    using Base::_nil;
    using Base::_root;
};

} // namespace orv
