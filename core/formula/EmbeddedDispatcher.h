#pragma once

#include "core/formula/TreeWatcher.h"

#include <sigc++/signal.h>
#include <sigc++/trackable.h>

#include <memory>
#include <string>

namespace ZemTree {

class EmbeddedFormula;
class Node;

// Looks for the target of an embedded formula from its owner, now and whenever the tree around the owner changes.
//
// The search walks the owner's ancestors from the parent up to the root; at each ancestor it checks the ancestor
// itself and then its direct children in order, and the first match wins. The owner itself never matches. A node
// matches when it is a UnitableContainer whose getExtendedTypeInfo() equals the target type, or when the
// ExtendedTypeInfo of its dynamic type does. So the target is an ancestor or a sibling of an ancestor (or of the
// owner), the nearest one first.
//
// The search runs again when the owner or an ancestor moves in the tree, and when the children of an ancestor
// change. The signal fires when the target found becomes another node that is not null; losing a target
// fires nothing. A dispatcher whose tree is torn down around it finds nothing more.
class EmbeddedDispatcher : public sigc::trackable {
public:
    // Neither is owned; the formula must outlive the dispatcher. A null owner, a null formula or an undefined
    // target type never find a target.
    EmbeddedDispatcher(Node* owner, EmbeddedFormula* formula);
    ~EmbeddedDispatcher();
    EmbeddedDispatcher(const EmbeddedDispatcher&) = delete;
    EmbeddedDispatcher& operator=(const EmbeddedDispatcher&) = delete;

    Node* getTarget() const { return _target; }

    // The embedded formula's text with every reference made relative to the owner: "{p}" becomes
    // "{<path from the owner to the target>/p}", with "." steps dropped and "step/.." pairs folded; "{}" and
    // "{.}" lead to the target itself. Texts in quotes stay as they are. Without a target, or when no path
    // leads from the owner to the target, the text is returned unchanged.
    std::string getCalculatedFormula() const;

    // A slot may destroy the dispatcher.
    sigc::signal<void>& getSignalTargetChanged() { return *_signalTargetChanged; }

private:
    void _search();
    Node* _find() const;
    bool _matches(Node* node) const;
    void _onNodeDestroyed(const Node* node);

    Node* _owner;
    EmbeddedFormula* _formula;
    Node* _target = nullptr;
    TreeWatcher _watcher;
    // Shared, so that it outlives its own emission when its slot destroys the dispatcher.
    std::shared_ptr<sigc::signal<void>> _signalTargetChanged = std::make_shared<sigc::signal<void>>();
};

} // namespace ZemTree
