#include "evaluation/ActionEvaluationHelper.h"

#include "core/tree/ActionUnit.h"
#include "core/tree/Node.h"
#include "evaluation/ITestActionContainer.h"
#include "evaluation/ITestContainer.h"

#include <algorithm>
#include <vector>

namespace ZemTree {

void ActionEvaluationHelper::evaluateCrossActions(ITestContainer* from, ITestContainer* to)
{
    // `from` and all its ancestors, nearest first.
    std::vector<Node*> fromChain;
    if (from != nullptr) {
        for (Node* node = dynamic_cast<Node*>(from); node != nullptr; node = node->getParent())
            fromChain.push_back(node);
    }

    // `to`'s line up to the first node it shares with `from`; without one, up to its root.
    std::vector<Node*> toChain;
    const Node* commonAncestor = nullptr;
    if (to != nullptr) {
        for (Node* node = dynamic_cast<Node*>(to); node != nullptr; node = node->getParent()) {
            if (std::find(fromChain.begin(), fromChain.end(), node) != fromChain.end()) {
                commonAncestor = node;
                break;
            }
            toChain.push_back(node);
        }
    }

    // Structural nodes on the way hold no actions; they are passed over but still count as ancestors above.
    for (Node* node : fromChain) {
        if (node == commonAncestor)
            break;
        if (auto* container = dynamic_cast<ITestActionContainer*>(node)) {
            if (ActionUnit* action = container->getActionAfter())
                action->evaluate(nullptr);
        }
    }

    for (auto it = toChain.rbegin(); it != toChain.rend(); ++it) {
        if (auto* container = dynamic_cast<ITestActionContainer*>(*it)) {
            if (ActionUnit* action = container->getActionBefore())
                action->evaluate(nullptr);
        }
    }
}

} // namespace ZemTree
