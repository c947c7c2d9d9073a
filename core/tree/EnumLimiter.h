#pragma once

#include "core/tree/EnumItem.h"
#include "core/tree/Node.h"

#include <sigc++/signal.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

// The list of values that a unit may take, each an EnumItem child. It belongs either to its unit (a property
// child, locked with the unit's structure) or to whoever shares it between units. A locked limiter refuses
// every change of its items.
//
// Saved with its owner through the node frame: one element per item. Reading replaces the items of an
// unlocked limiter by those of the file; a locked limiter keeps the items its code gave it.
class EnumLimiter : public Node {
public:
    EnumLimiter();
    explicit EnumLimiter(const std::string& id);

    // Appends an item. Throws std::logic_error, changing nothing, when the limiter is locked.
    EnumItem* addItem(const std::string& value, const LocalString& display);
    // Removes every item. Throws std::logic_error, changing nothing, when the limiter is locked.
    void clearItems();

    std::size_t count() const { return size(); }
    // The first item whose value is `value`, or null.
    EnumItem* findByValue(const std::string& value) const;
    std::vector<EnumItem*> getItems() const;
    bool contains(const std::string& value) const { return findByValue(value) != nullptr; }

    bool canContains(Node* item) override;

    // Fires once after each change of the items: an adding, a removal, a move, a clearing or a reading.
    sigc::signal<void>& getSignalChanged() { return _signalChanged; }

protected:
    void _onContentCollectionChanged(Args& args) override;
    void _onReset() override;
    void _onPostReset() override;
    void _setContentXml(xmlpp::Element* own, const SerializationMode& mode) override;
    std::unique_ptr<Node> _createNodeFromXml(xmlpp::Element* element) override;

private:
    // Between the two, changes of the items are only noted; the outermost end emits once for all of them.
    void _beginBatch();
    void _endBatch();

    int _batchDepth = 0;
    bool _isChangedInBatch = false;
    bool _isResetBatchOpen = false;
    sigc::signal<void> _signalChanged;
};

} // namespace ZemTree
