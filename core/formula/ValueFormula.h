#pragma once

#include "core/common/Out.h"
#include "core/formula/FormulaParserResult.h"
#include "core/formula/TreeWatcher.h"
#include "core/formula/ValueExpression.h"

#include <sigc++/signal.h>
#include <sigc++/trackable.h>

#include <memory>
#include <string>
#include <vector>

namespace ZemTree {

class Node;

// The formula of a value, evaluated in the context of the value's node. References "{path}" are paths relative
// to that node (NodePathHelper) and lead to nodes that implement IValueOut: a double becomes a number, a text a
// text, anything else an object; a formula that is one reference gives that object itself.
//
// The text is parsed once. The value out is computed on the first reading and kept until something it depends
// on changes: the value out of a referenced node, or the tree, so that a reference now leads elsewhere or
// nowhere. Then the record is dropped and the change signal fires; the next reading computes anew.
//
// An error (syntax, unknown reference, a referenced value's own error, a type error) travels as the `error` of the
// value out, a FormulaError, with the number 0 in `value`. A cycle of formulas through references is an error
// too. All of it runs on the thread that owns the tree. A formula that outlives the tree of its context (torn
// down from its root) goes on as one without a context.
class ValueFormula : public sigc::trackable {
public:
    // A null context leaves every reference unresolved.
    ValueFormula(Node* context, const std::string& text);
    ~ValueFormula();
    ValueFormula(const ValueFormula&) = delete;
    ValueFormula& operator=(const ValueFormula&) = delete;

    const std::string& getFormula() const { return _formula; }
    // The value is never null.
    const Zem::Out<std::shared_ptr<Formula::ValueExpression>>& getValueOut() const;
    // Fires when the value out may have changed; the record is dropped by then. A slot may destroy the formula.
    sigc::signal<void>& getSignalValueOutChanged() { return *_signalValueOutChanged; }

    // The distinct references of the formula and the nodes they lead to now (null when unresolved), in the same
    // order.
    const std::vector<std::string>& getReferences() const;
    std::vector<Node*> getTargets() const;
    // True when following the active formulas of the nodes this formula reads leads back to its own node: every
    // formula on such a cycle reports the cycle error, whichever of them is read first.
    bool isOnCycle() const;

private:
    void _resolve();
    void _ensureResolved() const;
    void _onTreeChanged();
    void _onTargetValueOutChanged();
    void _onNodeDestroyed(const Node* destroyed);
    void _changed();
    std::shared_ptr<Formula::ValueExpression> _resolveReference(const std::string& reference) const;

    Node* _context;
    std::string _formula;
    std::shared_ptr<Formula::FormulaParserResult> _parsed;
    std::vector<Node*> _targets;
    bool _isResolved = false;
    mutable std::unique_ptr<Zem::Out<std::shared_ptr<Formula::ValueExpression>>> _valueOut;
    mutable bool _isCalculating = false;
    bool _isEmitting = false;
    TreeWatcher _watcher;
    // Shared, so that it outlives its own emission when a slot destroys the formula.
    std::shared_ptr<sigc::signal<void>> _signalValueOutChanged = std::make_shared<sigc::signal<void>>();
    // Expires with the formula, for the code that runs on after a slot which may have destroyed it.
    std::shared_ptr<const int> _lifetime = std::make_shared<const int>(0);
};

} // namespace ZemTree
