#include "core/tree/EnumLimiter.h"

#include "core/common/XmlInclude.h"
#include "core/tree/TreeLocalization.h"

#include <stdexcept>

namespace ZemTree {

namespace {

// A shared limiter may stand below an open section, so a reader must be able to rebuild it.
} // namespace

EnumLimiter::EnumLimiter() : EnumLimiter("Limiter") {}

EnumLimiter::EnumLimiter(const std::string& id) : Node(id) {}

EnumItem* EnumLimiter::addItem(const std::string& value, const LocalString& display)
{
    return add(std::make_unique<EnumItem>(value, display));
}

void EnumLimiter::clearItems()
{
    if (isLocked())
        throw std::logic_error(lng::Tree::get("error.ReadOnly"));
    reset();
}

EnumItem* EnumLimiter::findByValue(const std::string& value) const
{
    for (Node* node : _items) {
        auto* const item = static_cast<EnumItem*>(node);
        if (item->getValue() == value)
            return item;
    }
    return nullptr;
}

std::vector<EnumItem*> EnumLimiter::getItems() const
{
    std::vector<EnumItem*> items;
    items.reserve(_items.size());
    // canContains lets nothing but items in.
    for (Node* node : _items)
        items.push_back(static_cast<EnumItem*>(node));
    return items;
}

bool EnumLimiter::canContains(Node* item)
{
    return dynamic_cast<EnumItem*>(item) != nullptr;
}

void EnumLimiter::_onContentCollectionChanged(Args& args)
{
    Node::_onContentCollectionChanged(args);
    if (_batchDepth > 0) {
        _isChangedInBatch = true;
        return;
    }
    _signalChanged.emit();
}

void EnumLimiter::_onReset()
{
    Node::_onReset();
    // A locked limiter refuses the first removal and never reaches _onPostReset; an empty one changes nothing.
    if (isLocked() || empty())
        return;
    _isResetBatchOpen = true;
    _beginBatch();
}

void EnumLimiter::_onPostReset()
{
    Node::_onPostReset();
    if (!_isResetBatchOpen)
        return;
    _isResetBatchOpen = false;
    _endBatch();
}

void EnumLimiter::_setContentXml(xmlpp::Element* own, const SerializationMode& mode)
{
    if (isLocked())
        return;
    _beginBatch();
    try {
        reset();
        Node::_setContentXml(own, mode);
    }
    catch (...) {
        // Whatever was changed before the failure is still told.
        _endBatch();
        throw;
    }
    _endBatch();
}

std::unique_ptr<Node> EnumLimiter::_createNodeFromXml(xmlpp::Element*)
{
    return std::make_unique<EnumItem>();
}

void EnumLimiter::_beginBatch()
{
    ++_batchDepth;
}

void EnumLimiter::_endBatch()
{
    if (--_batchDepth > 0 || !_isChangedInBatch)
        return;
    _isChangedInBatch = false;
    _signalChanged.emit();
}

} // namespace ZemTree
