#include "containers/UniversalGeneralContainer.h"

#include "containers/DescriptorsContainer.h"
#include "containers/ParametersContainer.h"
#include "containers/SettingsContainer.h"
#include "containers/SpecialModuleInfo.h"
#include "core/common/XmlInclude.h"
#include "core/tree/ActionUnit.h"
#include "core/tree/SeparateUnit.h"
#include "localisation/TreeRelay.h"

#include <sigc++/functors/mem_fun.h>

#include <utility>

namespace ZemTree {

namespace {

LocalString text(const char* key)
{
    return LocalString(lng::TreeRelay::get(key));
}

} // namespace

UniversalGeneralContainer::UniversalGeneralContainer() : UniversalGeneralContainer("UniversalGeneralContainer") {}

UniversalGeneralContainer::UniversalGeneralContainer(const std::string& id)
    : UniversalGeneralContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

UniversalGeneralContainer::UniversalGeneralContainer(const std::string& id, const LocalString& description,
                                                     const LocalString& secondText)
    : TestableContainer(id, description, secondText)
{
}

UniversalGeneralContainer::~UniversalGeneralContainer() = default;

void UniversalGeneralContainer::setSpecialModuleInfo(std::unique_ptr<SpecialModuleInfo> info)
{
    _specialModuleInfo = std::move(info);
}

void UniversalGeneralContainer::_fillTemplate()
{
    TestableContainer::_fillTemplate();
    if (getParent() == nullptr) {
        _descriptors = add(std::make_unique<DescriptorsContainer>("Descriptors"));
        getSignalHierarchicalPositionChanged().connect(
            sigc::mem_fun(*this, &UniversalGeneralContainer::_onHierarchicalPositionChanged));
    }
    _settings = add(std::make_unique<SettingsContainer>("Settings"));
    _parameters = add(std::make_unique<ParametersContainer>("Parameters"));
    _fillActionsTemplate();
}

void UniversalGeneralContainer::_onTemplateFilled()
{
    TestableContainer::_onTemplateFilled();
    Node::_lockContainer();
    _settings->lockContainer();
    _parameters->lockContainer();
}

void UniversalGeneralContainer::_fillActionsTemplate()
{
    _parameters->add(std::make_unique<SeparateUnit>("GroupMode", text("Group.actions"), text("Group.actions")));
    _actionBefore = _parameters->add(std::make_unique<ActionUnit>("ActionBefore", text("Actions.before")));
    _actionBefore->setIsActive(false);
    _actionAfter = _parameters->add(std::make_unique<ActionUnit>("ActionAfter", text("Actions.after")));
    _actionAfter->setIsActive(false);
}

void UniversalGeneralContainer::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    TestableContainer::_setExtendedXml(own, mode);
    if (mode.kind != SerializationMode::System || _getFirstChildElement(own, "SpecialInfo") == nullptr)
        return;
    _specialModuleInfo = std::make_unique<SpecialModuleInfo>();
    _specialModuleInfo->setXml(own);
}

void UniversalGeneralContainer::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    TestableContainer::_getExtendedXml(own, mode);
    if (mode.kind == SerializationMode::System && _specialModuleInfo)
        _specialModuleInfo->getXml(own);
}

void UniversalGeneralContainer::_onHierarchicalPositionChanged(Node*, Args&)
{
    if (_descriptors == nullptr)
        return;
    if (getParent() == nullptr)
        _descriptors->getIsEditable() = Zem::NullableBool(true);
    else
        _descriptors->getIsEditable() = Zem::NullableBool();
}

} // namespace ZemTree
