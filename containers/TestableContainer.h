#pragma once

#include "containers/TestCounters.h"
#include "containers/UnitableStructureContainer.h"
#include "core/common/Nullable.h"
#include "evaluation/ITestableContainer.h"

#include <sigc++/signal.h>

#include <string>

namespace ZemTree {

// Base of everything in the tree that takes part in testing. A subtree tells whether its tests are chosen, as
// a three-valued flag (empty: mixed, or no tests at all), and how many of its results are good, bad or
// missing. Both are worked out afresh from the tests below on every reading; a container only remembers what
// it last published, so that it signals real changes only.
class TestableContainer : public UnitableStructureContainer, public virtual ITestableContainer {
public:
    using SignalIsEvaluatedChanged = sigc::signal<void, ITestableContainer*>;

    TestableContainer();
    explicit TestableContainer(const std::string& id);
    TestableContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    Zem::Nullable<bool> getIsEvaluated() override;
    bool getIsEvaluatedEnabled() const { return true; }
    // Chooses or unchooses every test below, then publishes the changes up and down the tree.
    void setIsEvaluated(bool isEvaluated);
    TestCounters getCounters() const { return _checkCounters(); }

    SignalIsEvaluatedChanged& getSignalIsEvaluatedChanged() { return _signalIsEvaluatedChanged; }

    // Holds back the publishing of states on this thread while a whole tree is read, and publishes once for
    // the tree under `root` when the outermost batch ends. Reading a project sets the flag of every test and
    // fills every result; publishing each of these up to the root would recount the whole tree per test.
    // Observers see the same final states and signals for what differs from what was published before.
    class StateUpdateBatch {
    public:
        explicit StateUpdateBatch(Node* root);
        ~StateUpdateBatch();
        StateUpdateBatch(const StateUpdateBatch&) = delete;
        StateUpdateBatch& operator=(const StateUpdateBatch&) = delete;

    private:
        Node* _root;
    };
    sigc::signal<void>& getSignalCountersChanged() { return _signalCountersChanged; }

protected:
    // Sets the flag of every test below without publishing anything.
    virtual void _setIsEvaluatedObject(bool isEvaluated);
    // The common flag of the testable children; empty when one of them is empty, when they differ, or when
    // there is none.
    virtual Zem::Nullable<bool> _checkIsEvaluatedObject() const;
    // The sum of the testable children's counters.
    virtual TestCounters _checkCounters() const;

    void _raiseSignalIsEvaluatedChanged();
    // Publishes this container's flag and counters where they differ from what was published last.
    void _updateSelfState();
    // Publishes this container's state and walks on: down the testable children unless `direction` is false,
    // up to a testable parent unless it is true. Empty goes both ways.
    void _updateState(Zem::Nullable<bool> direction);

    // A testable child that comes brings its state up (and refreshes its own subtree); one that goes refreshes
    // its own subtree and then this container upward.
    void _onContentCollectionChanged(Args& args) override;

private:
    SignalIsEvaluatedChanged _signalIsEvaluatedChanged;
    sigc::signal<void> _signalCountersChanged;
    Zem::Nullable<bool> _isEvaluated{false};
    TestCounters _counters;
};

} // namespace ZemTree
