#pragma once

#include "core/tree/Unitable.h"

#include <sigc++/signal.h>

#include <atomic>
#include <cstdint>
#include <string>

namespace ZemTree {

class IActionEngineAPI;

// A unit holding an action, a text the host's action engine understands, run when execution passes it.
// Saves the action as the attribute `Action`.
class ActionUnit : public Unitable {
public:
    using SignalEvaluated = sigc::signal<void, ActionUnit*, IActionEngineAPI*>;
    using SignalActionChanged = sigc::signal<void, ActionUnit*>;

    explicit ActionUnit(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                        const LocalString& secondText = LocalString::Empty());

    // Runs the action. A null engine is fine: the action then has nothing to run against, but the evaluation
    // is still counted and signalled, whether the unit is active or not. May run on the queue's worker.
    virtual void evaluate(IActionEngineAPI* api);
    std::uint64_t getEvaluationCount() const { return _evaluationCount.load(); }

    const std::string& getAction() const { return _action; }
    // Compares first; on a change stores and emits.
    void setAction(const std::string& action);

    // Fires after each evaluation, on the thread that evaluated.
    SignalEvaluated& getSignalEvaluated() { return _signalEvaluated; }
    SignalActionChanged& getSignalActionChanged() { return _signalActionChanged; }

protected:
    // Runs the action text against the engine; called by evaluate() for an active unit with an engine and a
    // non-empty action. Empty here: the engine's own classes know what an action means.
    virtual void _runAction(IActionEngineAPI& api);

    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;

private:
    std::string _action;
    std::atomic<std::uint64_t> _evaluationCount{0};
    SignalEvaluated _signalEvaluated;
    SignalActionChanged _signalActionChanged;
};

} // namespace ZemTree
