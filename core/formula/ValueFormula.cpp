#include "core/formula/ValueFormula.h"

#include "core/formula/FormulaEvaluator.h"
#include "core/formula/FormulaParser.h"
#include "core/tree/IValueOut.h"
#include "core/tree/Node.h"
#include "core/tree/NodePathHelper.h"
#include "core/tree/ValueErrors.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

namespace ZemTree {

namespace {

using Watched = std::vector<std::pair<Node*, unsigned>>;

// Collects the nodes whose changes can make `path` lead elsewhere: each node whose child the path looks up (its
// collection), and each node the path leaves upwards (its position). It walks as NodePathHelper::getTarget does
// and stops where that would.
void collectPathNodes(Node* context, const std::string& path, Watched& watched)
{
    if (path.empty())
        return;
    Node* current = context;
    std::size_t start = 0;
    while (current != nullptr) {
        const std::size_t end = path.find('/', start);
        const std::string step = path.substr(start, end == std::string::npos ? std::string::npos : end - start);
        if (step == "..") {
            watched.emplace_back(current, TreeWatcher::PositionChanged);
            current = current->getParent();
        }
        else if (step != ".") {
            std::string id;
            if (!NodePathHelper::unescapeId(step, id))
                return;
            watched.emplace_back(current, TreeWatcher::CollectionChanged);
            current = current->findChild(id);
        }
        if (end == std::string::npos)
            return;
        start = end + 1;
    }
}

const Zem::Out<std::shared_ptr<Formula::ValueExpression>>& circularOut()
{
    static const Zem::Out<std::shared_ptr<Formula::ValueExpression>> out{
        Formula::ValueExpression::number(0.0),
        std::make_shared<const FormulaError>("Circular reference: the formula depends on its own value", 0)};
    return out;
}

// Sets a flag for a scope and clears it when the scope is left, also by an exception, unless the owner of the
// flag died in between (a slot may destroy the formula that signals it).
class FlagGuard {
public:
    FlagGuard(bool& flag, std::weak_ptr<const void> owner) : _flag(flag), _owner(std::move(owner)) { _flag = true; }
    ~FlagGuard()
    {
        if (!_owner.expired())
            _flag = false;
    }
    FlagGuard(const FlagGuard&) = delete;
    FlagGuard& operator=(const FlagGuard&) = delete;

private:
    bool& _flag;
    std::weak_ptr<const void> _owner;
};

} // namespace

ValueFormula::ValueFormula(Node* context, const std::string& text)
    : _context(context), _formula(text), _parsed(Formula::FormulaParser::separate(text)),
      _targets(_parsed->references.size(), nullptr),
      _watcher(TreeWatcher::Handlers{[this] { _onTreeChanged(); }, [this] { _onTargetValueOutChanged(); },
                                     [this](const Node* node) { _onNodeDestroyed(node); }})
{
    _resolve();
}

ValueFormula::~ValueFormula() = default;

const std::vector<std::string>& ValueFormula::getReferences() const
{
    return _parsed->references;
}

std::vector<Node*> ValueFormula::getTargets() const
{
    _ensureResolved();
    return _targets;
}

const Zem::Out<std::shared_ptr<Formula::ValueExpression>>& ValueFormula::getValueOut() const
{
    if (_valueOut != nullptr)
        return *_valueOut;
    // A formula that reads itself back through its references meets itself here.
    if (_isCalculating)
        return circularOut();
    _ensureResolved();
    // Caught before any reading, so that no member of a cycle computes a number from another's half-done state.
    if (isOnCycle()) {
        _valueOut = std::make_unique<Zem::Out<std::shared_ptr<Formula::ValueExpression>>>(circularOut());
        return *_valueOut;
    }

    Zem::Out<std::shared_ptr<Formula::ValueExpression>> out;
    {
        const FlagGuard guard(_isCalculating, _lifetime);
        out = Formula::FormulaEvaluator::calculate(
            _parsed.get(), [this](const std::string& reference) { return _resolveReference(reference); });
    }
    if (out.value == nullptr)
        out.value = Formula::ValueExpression::number(0.0);
    _valueOut = std::make_unique<Zem::Out<std::shared_ptr<Formula::ValueExpression>>>(std::move(out));
    return *_valueOut;
}

bool ValueFormula::isOnCycle() const
{
    if (_context == nullptr)
        return false;
    // A walk over the graph of formulas through their present targets; each formula is entered once.
    std::set<const ValueFormula*> visited{this};
    std::vector<const ValueFormula*> pending{this};
    while (!pending.empty()) {
        const ValueFormula* const formula = pending.back();
        pending.pop_back();
        for (Node* target : formula->getTargets()) {
            if (target == nullptr)
                continue;
            if (target == _context)
                return true;
            const auto* value = dynamic_cast<const IValueOut*>(target);
            const ValueFormula* const next = value != nullptr ? value->getActiveFormula() : nullptr;
            if (next != nullptr && visited.insert(next).second)
                pending.push_back(next);
        }
    }
    return false;
}

std::shared_ptr<Formula::ValueExpression> ValueFormula::_resolveReference(const std::string& reference) const
{
    const std::vector<std::string>& references = _parsed->references;
    const auto found = std::find(references.begin(), references.end(), reference);
    if (found == references.end())
        return nullptr;
    Node* const target = _targets[static_cast<std::size_t>(found - references.begin())];
    if (target == nullptr)
        return nullptr;
    const auto* value = dynamic_cast<const IValueOut*>(target);
    if (value == nullptr)
        throw std::runtime_error("the node '" + target->getId() + "' has no value");
    std::shared_ptr<IDataContainer> data = value->getValueObject();
    if (const Zem::ErrorPointer& error = value->getError())
        throw std::runtime_error(error->what());
    if (data == nullptr)
        throw std::runtime_error("the node '" + target->getId() + "' gives no data");

    const std::type_info& type = data->getType();
    if (type == typeid(double))
        return Formula::ValueExpression::number(*static_cast<const double*>(data->getData()));
    if (type == typeid(std::string))
        return Formula::ValueExpression::text(*static_cast<const std::string*>(data->getData()));
    return Formula::ValueExpression::object(std::move(data));
}

void ValueFormula::_ensureResolved() const
{
    // The object is never const itself; only the reading is.
    if (!_isResolved)
        const_cast<ValueFormula*>(this)->_resolve();
}

void ValueFormula::_resolve()
{
    const std::vector<std::string>& references = _parsed->references;
    std::vector<Node*> targets(references.size(), nullptr);
    Watched watched;
    if (_context != nullptr && !references.empty()) {
        // The context's own moves, and any change among the children of its ancestors, can redirect a path.
        watched.emplace_back(_context, TreeWatcher::PositionChanged);
        for (Node* ancestor = _context->getParent(); ancestor != nullptr; ancestor = ancestor->getParent())
            watched.emplace_back(ancestor, TreeWatcher::CollectionChanged);
        for (std::size_t i = 0; i < references.size(); ++i) {
            collectPathNodes(_context, references[i], watched);
            targets[i] = NodePathHelper::getTarget(_context, references[i]);
            if (targets[i] != nullptr)
                watched.emplace_back(targets[i], TreeWatcher::ValueOutChanged);
        }
    }
    _targets = std::move(targets);
    _isResolved = true;
    _watcher.watch(watched);
}

void ValueFormula::_onTreeChanged()
{
    const std::vector<Node*> before = _targets;
    _resolve();
    if (_targets != before)
        _changed();
    // Nothing after the signal: a slot may have destroyed this formula.
}

void ValueFormula::_onTargetValueOutChanged()
{
    _changed();
}

void ValueFormula::_onNodeDestroyed(const Node*)
{
    // A node died without telling its tree, so the tree is being torn down from a root; every watched node is in
    // the context's tree, so the context goes as well. Nothing of the tree is read again: the formula goes on
    // as one without a context.
    _context = nullptr;
    std::fill(_targets.begin(), _targets.end(), nullptr);
    _isResolved = false;
    _valueOut.reset();
    _watcher.clear();
}

void ValueFormula::_changed()
{
    _valueOut.reset();
    // A cycle of formulas would echo the signal round for ever; the record is dropped all the same.
    if (_isEmitting)
        return;
    const FlagGuard guard(_isEmitting, _lifetime);
    const std::shared_ptr<sigc::signal<void>> signal = _signalValueOutChanged;
    signal->emit();
    // A slot may have destroyed this formula: only the guard, which knows, touches it after the signal.
}

} // namespace ZemTree
