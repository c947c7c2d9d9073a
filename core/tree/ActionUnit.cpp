#include "core/tree/ActionUnit.h"

#include "core/common/XmlInclude.h"

namespace ZemTree {

namespace {

// Users add these below open sections, so a reader must be able to rebuild them.
const char* const actionAttribute = "Action";

} // namespace

ActionUnit::ActionUnit(const std::string& id, const LocalString& description, const LocalString& secondText)
    : Unitable(id, description, secondText)
{
}

void ActionUnit::evaluate(IActionEngineAPI* api)
{
    if (api != nullptr && isActive() && !_action.empty())
        _runAction(*api);
    ++_evaluationCount;
    _signalEvaluated.emit(this, api);
}

void ActionUnit::setAction(const std::string& action)
{
    if (_action == action)
        return;
    _action = action;
    _signalActionChanged.emit(this);
}

void ActionUnit::_runAction(IActionEngineAPI&) {}

void ActionUnit::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    Unitable::_setExtendedXml(own, mode);
    if (const xmlpp::Attribute* const action = own->get_attribute(actionAttribute))
        setAction(action->get_value());
}

void ActionUnit::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    Unitable::_getExtendedXml(own, mode);
    own->set_attribute(actionAttribute, _action);
}

} // namespace ZemTree
