#pragma once

#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace ZemTree {

class Node;

// Walks a subtree depth-first in pre-order: a node comes before its children, children in their order.
// The subtree must not change while an iterator walks it.
class NodeHierarchicalIterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Node*;
    using difference_type = std::ptrdiff_t;
    using pointer = Node* const*;
    using reference = Node* const&;

    // The end iterator.
    NodeHierarchicalIterator() = default;
    // Starts at `root`; with `skipRoot` the first node is the root's first child. A null root gives the end.
    NodeHierarchicalIterator(Node* root, bool skipRoot);

    Node* operator*() const { return _current; }
    NodeHierarchicalIterator& operator++();
    NodeHierarchicalIterator operator++(int);
    bool operator==(const NodeHierarchicalIterator& other) const { return _current == other._current; }
    bool operator!=(const NodeHierarchicalIterator& other) const { return _current != other._current; }

private:
    void _advance();

    Node* _current = nullptr;
    // The nodes whose children are being walked, each with the index of the child to visit next.
    std::vector<std::pair<Node*, std::size_t>> _pending;
};

// The nodes of the subtree under `root` for a range-for. The root itself comes first unless `skipRoot` is
// set, so NodeTreeTraversal(node, false) covers the node and all its descendants.
class NodeTreeTraversal {
public:
    explicit NodeTreeTraversal(Node* root, bool skipRoot = false) : _root(root), _skipRoot(skipRoot) {}

    NodeHierarchicalIterator begin() const { return NodeHierarchicalIterator(_root, _skipRoot); }
    NodeHierarchicalIterator end() const { return NodeHierarchicalIterator(); }

private:
    Node* _root;
    bool _skipRoot;
};

} // namespace ZemTree
