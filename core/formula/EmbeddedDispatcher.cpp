#include "core/formula/EmbeddedDispatcher.h"

#include "core/formula/EmbeddedFormula.h"
#include "core/formula/FormulaParser.h"
#include "core/tree/Node.h"
#include "core/tree/NodePathHelper.h"
#include "core/tree/UnitableContainer.h"

#include <typeinfo>
#include <utility>
#include <vector>

namespace ZemTree {

namespace {

// Drops "." steps and folds "step/.." pairs, without looking at the tree; "" becomes ".". Empty steps stay, so
// that a malformed path stays malformed.
std::string normalisePath(const std::string& path)
{
    std::vector<std::string> steps;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = path.find('/', start);
        const std::string step = path.substr(start, end == std::string::npos ? std::string::npos : end - start);
        if (step == "..") {
            if (!steps.empty() && steps.back() != ".." && !steps.back().empty())
                steps.pop_back();
            else
                steps.push_back(step);
        }
        else if (step != ".") {
            steps.push_back(step);
        }
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    if (steps.empty())
        return ".";
    std::string normalised = steps.front();
    for (std::size_t i = 1; i < steps.size(); ++i)
        normalised += '/' + steps[i];
    return normalised;
}

} // namespace

EmbeddedDispatcher::EmbeddedDispatcher(Node* owner, EmbeddedFormula* formula)
    : _owner(owner), _formula(formula),
      _watcher(
          TreeWatcher::Handlers{[this] { _search(); }, nullptr, [this](const Node* node) { _onNodeDestroyed(node); }})
{
    _search();
}

EmbeddedDispatcher::~EmbeddedDispatcher() = default;

std::string EmbeddedDispatcher::getCalculatedFormula() const
{
    if (_formula == nullptr)
        return std::string();
    const std::string& text = _formula->getFormula();
    if (_owner == nullptr || _target == nullptr)
        return text;
    const std::string base = NodePathHelper::getPath(_owner, _target);
    if (base.empty())
        return text;
    return Formula::FormulaParser::replaceReferences(
        text, [&base](const std::string& path) { return normalisePath(path.empty() ? base : base + "/" + path); });
}

void EmbeddedDispatcher::_search()
{
    Node* const found = _find();

    std::vector<std::pair<Node*, unsigned>> watched;
    if (_owner != nullptr && _formula != nullptr && _formula->getTargetType().isDefined()) {
        watched.emplace_back(_owner, TreeWatcher::PositionChanged);
        for (Node* ancestor = _owner->getParent(); ancestor != nullptr; ancestor = ancestor->getParent())
            watched.emplace_back(ancestor, TreeWatcher::CollectionChanged);
        // Watched for no event: only so that its silent destruction is noticed.
        watched.emplace_back(found, 0u);
    }
    _watcher.watch(watched);

    Node* const before = _target;
    _target = found;
    if (found != nullptr && found != before) {
        const std::shared_ptr<sigc::signal<void>> signal = _signalTargetChanged;
        signal->emit();
    }
    // Nothing after the signal: its slot usually serves the formula and destroys this dispatcher.
}

Node* EmbeddedDispatcher::_find() const
{
    if (_owner == nullptr || _formula == nullptr || !_formula->getTargetType().isDefined())
        return nullptr;
    for (Node* ancestor = _owner->getParent(); ancestor != nullptr; ancestor = ancestor->getParent()) {
        if (_matches(ancestor))
            return ancestor;
        for (Node* child : *ancestor) {
            if (child != _owner && _matches(child))
                return child;
        }
    }
    return nullptr;
}

bool EmbeddedDispatcher::_matches(Node* node) const
{
    if (node == nullptr)
        return false;
    const ExtendedTypeInfo& wanted = _formula->getTargetType();
    if (const auto* container = dynamic_cast<const UnitableContainer*>(node)) {
        if (container->getExtendedTypeInfo() == wanted)
            return true;
    }
    return ExtendedTypeInfo::fromType(typeid(*node)) == wanted;
}

void EmbeddedDispatcher::_onNodeDestroyed(const Node*)
{
    // Only a tree being torn down destroys a watched node without a signal: nothing of it is read again.
    _owner = nullptr;
    _target = nullptr;
    _watcher.clear();
}

} // namespace ZemTree
