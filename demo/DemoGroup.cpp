#include "DemoGroup.h"

#include "core/tree/ActionUnit.h"
#include "localisation/TreeRelay.h"

#include <memory>

namespace ZemTreeDemo {

DemoGroup::DemoGroup(const std::string& id, const ZemTree::LocalString& description)
    : ZemTree::Unitable(id, description)
{
    _actionBefore = add(std::make_unique<ZemTree::ActionUnit>("ActionBefore", lng::TreeRelay::get("Actions.before")));
    _actionAfter = add(std::make_unique<ZemTree::ActionUnit>("ActionAfter", lng::TreeRelay::get("Actions.after")));
}

} // namespace ZemTreeDemo
