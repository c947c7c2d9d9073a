#include "containers/TestableContainer.h"

namespace ZemTree {

namespace {

// The number of open StateUpdateBatch objects on this thread.
thread_local int stateUpdateBatches = 0;

} // namespace

TestableContainer::StateUpdateBatch::StateUpdateBatch(Node* root) : _root(root)
{
    ++stateUpdateBatches;
}

TestableContainer::StateUpdateBatch::~StateUpdateBatch()
{
    if (--stateUpdateBatches != 0)
        return;
    try {
        if (auto* testable = dynamic_cast<TestableContainer*>(_root))
            testable->_updateState(Zem::Nullable<bool>());
    }
    catch (...) {
        // A slot that throws from a destructor would end the process; the states are read afresh anyway.
    }
}

TestableContainer::TestableContainer() : TestableContainer("TestableContainer") {}

TestableContainer::TestableContainer(const std::string& id)
    : TestableContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

TestableContainer::TestableContainer(const std::string& id, const LocalString& description,
                                     const LocalString& secondText)
    : UnitableStructureContainer(id, description, secondText)
{
}

Zem::Nullable<bool> TestableContainer::getIsEvaluated()
{
    if (!getIsEvaluatedEnabled())
        return false;
    return _checkIsEvaluatedObject();
}

void TestableContainer::setIsEvaluated(bool isEvaluated)
{
    _setIsEvaluatedObject(isEvaluated);
    _updateState(Zem::Nullable<bool>());
}

void TestableContainer::_setIsEvaluatedObject(bool isEvaluated)
{
    for (Node* child : _items) {
        if (auto* testable = dynamic_cast<TestableContainer*>(child))
            testable->_setIsEvaluatedObject(isEvaluated);
    }
}

Zem::Nullable<bool> TestableContainer::_checkIsEvaluatedObject() const
{
    Zem::Nullable<bool> common;
    for (Node* child : _items) {
        auto* testable = dynamic_cast<TestableContainer*>(child);
        if (testable == nullptr)
            continue;
        const Zem::Nullable<bool> value = testable->getIsEvaluated();
        if (!value.hasValue())
            return Zem::Nullable<bool>();
        if (!common.hasValue())
            common = value;
        else if (common.getValue() != value.getValue())
            return Zem::Nullable<bool>();
    }
    return common;
}

TestCounters TestableContainer::_checkCounters() const
{
    TestCounters sum;
    for (Node* child : _items) {
        if (const auto* testable = dynamic_cast<const TestableContainer*>(child))
            sum += testable->getCounters();
    }
    return sum;
}

void TestableContainer::_raiseSignalIsEvaluatedChanged()
{
    _signalIsEvaluatedChanged.emit(this);
}

void TestableContainer::_updateSelfState()
{
    const Zem::Nullable<bool> isEvaluated = getIsEvaluated();
    if (isEvaluated != _isEvaluated) {
        _isEvaluated = isEvaluated;
        _raiseSignalIsEvaluatedChanged();
    }
    const TestCounters counters = getCounters();
    if (counters != _counters) {
        _counters = counters;
        _signalCountersChanged.emit();
    }
}

void TestableContainer::_updateState(Zem::Nullable<bool> direction)
{
    if (stateUpdateBatches != 0)
        return;
    _updateSelfState();
    if (!direction.hasValue() || direction.getValue()) {
        // A copy: a slot of a child's signal may change this container's children.
        const std::vector<Node*> children = _items;
        for (Node* child : children) {
            if (auto* testable = dynamic_cast<TestableContainer*>(child))
                testable->_updateState(true);
        }
    }
    if (!direction.hasValue() || !direction.getValue()) {
        if (auto* parent = dynamic_cast<TestableContainer*>(getParent()))
            parent->_updateState(false);
    }
}

void TestableContainer::_onContentCollectionChanged(Args& args)
{
    auto* testable = dynamic_cast<TestableContainer*>(args.item);
    if (testable == nullptr)
        return;
    if (args.action == Zem::NotifyCollectionChangedAction::Added) {
        testable->_updateState(Zem::Nullable<bool>());
    }
    else if (args.action == Zem::NotifyCollectionChangedAction::Removed) {
        testable->_updateState(true);
        _updateState(false);
    }
}

} // namespace ZemTree
