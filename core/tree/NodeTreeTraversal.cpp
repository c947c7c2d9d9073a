#include "core/tree/NodeTreeTraversal.h"

#include "core/tree/Node.h"

namespace ZemTree {

NodeHierarchicalIterator::NodeHierarchicalIterator(Node* root, bool skipRoot)
{
    if (root == nullptr)
        return;
    _current = root;
    if (skipRoot)
        _advance();
}

NodeHierarchicalIterator& NodeHierarchicalIterator::operator++()
{
    if (_current != nullptr)
        _advance();
    return *this;
}

NodeHierarchicalIterator NodeHierarchicalIterator::operator++(int)
{
    NodeHierarchicalIterator previous = *this;
    ++*this;
    return previous;
}

void NodeHierarchicalIterator::_advance()
{
    _pending.emplace_back(_current, 0);
    _current = nullptr;
    while (!_pending.empty()) {
        auto& [parent, next] = _pending.back();
        if (next < parent->size()) {
            Node* const child = parent->at(next++);
            if (child != nullptr) {
                _current = child;
                return;
            }
        }
        else {
            _pending.pop_back();
        }
    }
}

} // namespace ZemTree
