#pragma once

#include "core/tree/Unitable.h"
#include "evaluation/ITestActionContainer.h"

namespace ZemTreeDemo {

// A group of example tests with an action on entering and one on leaving.
class DemoGroup : public ZemTree::Unitable, public virtual ZemTree::ITestActionContainer {
public:
    DemoGroup(const std::string& id, const ZemTree::LocalString& description);

    Zem::Nullable<bool> getIsEvaluated() override { return true; }
    ZemTree::ActionUnit* getActionBefore() override { return _actionBefore; }
    ZemTree::ActionUnit* getActionAfter() override { return _actionAfter; }

private:
    ZemTree::ActionUnit* _actionBefore = nullptr;
    ZemTree::ActionUnit* _actionAfter = nullptr;
};

} // namespace ZemTreeDemo
