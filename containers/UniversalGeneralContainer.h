#pragma once

#include "containers/IEmbeddedHardwareContainer.h"
#include "containers/ISpecialModuleContainer.h"
#include "containers/TestableContainer.h"
#include "evaluation/ITestActionContainer.h"

#include <memory>
#include <string>

namespace ZemTree {

class ActionUnit;
class DescriptorsContainer;
class ParametersContainer;
class SettingsContainer;
class SpecialModuleInfo;

// The shape of every item the user sees in a test tree, from a protection down to a single test: the fixed
// sections `Descriptors` (only on an item built as a root), `Settings` and `Parameters`, the actions run on
// entering and leaving the item, where the item came from, and a slot for embedded hardware. Once filled, the
// item's own children and its settings and parameters are locked; the descriptors stay open to the user.
class UniversalGeneralContainer : public TestableContainer,
                                  public virtual ITestActionContainer,
                                  public virtual ISpecialModuleContainer,
                                  public virtual IEmbeddedHardwareContainer {
public:
    UniversalGeneralContainer();
    explicit UniversalGeneralContainer(const std::string& id);
    UniversalGeneralContainer(const std::string& id, const LocalString& description, const LocalString& secondText);
    ~UniversalGeneralContainer() override;

    ActionUnit* getActionBefore() override { return _actionBefore; }
    ActionUnit* getActionAfter() override { return _actionAfter; }
    std::unique_ptr<Node>* getEmbeddedHardware() override { return &_embeddedHardware; }
    SpecialModuleInfo* getSpecialModuleInfo() override { return _specialModuleInfo.get(); }
    void setSpecialModuleInfo(std::unique_ptr<SpecialModuleInfo> info);

    // Null until the item is filled; the descriptors stay null on an item filled below a parent.
    DescriptorsContainer* getDescriptors() const { return _descriptors; }
    SettingsContainer* getSettings() const { return _settings; }
    ParametersContainer* getParameters() const { return _parameters; }

protected:
    void _fillTemplate() override;
    void _onTemplateFilled() override;
    // Adds the group title and the two actions, both switched off, to the parameters.
    void _fillActionsTemplate();

    // A template carries `SpecialInfo`; a project does not.
    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;

private:
    // The descriptors are the user's to edit while the item is a root, and follow the parent below one.
    void _onHierarchicalPositionChanged(Node* source, Args& args);

    std::unique_ptr<SpecialModuleInfo> _specialModuleInfo;
    ActionUnit* _actionBefore = nullptr;
    ActionUnit* _actionAfter = nullptr;
    DescriptorsContainer* _descriptors = nullptr;
    SettingsContainer* _settings = nullptr;
    ParametersContainer* _parameters = nullptr;
    std::unique_ptr<Node> _embeddedHardware;
};

} // namespace ZemTree
