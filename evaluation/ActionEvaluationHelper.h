#pragma once

namespace ZemTree {

class ITestContainer;

// Runs the actions that lie between two tests: those of the nodes left behind and of the nodes entered.
class ActionEvaluationHelper {
public:
    ActionEvaluationHelper() = delete;

    // Leaves `from` and its ancestors up to, not including, the nearest ancestor it shares with `to`, running
    // their after-actions nearest first; then enters `to`'s ancestors below that one, running their
    // before-actions from the top down to `to`. A shared container stays entered, so its actions do not fire.
    // Either argument may be null: `from` at the start of a run, `to` at its end. Runs on the queue's worker and
    // reads parents without a lock, so the tree must keep its shape meanwhile. Exceptions of actions pass through.
    static void evaluateCrossActions(ITestContainer* from, ITestContainer* to);
};

} // namespace ZemTree
