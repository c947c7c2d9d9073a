#pragma once

#include "containers/ContainerHierarchicalMode.h"
#include "core/tree/IActionEngineAPIContainer.h"
#include "core/tree/IEditableHardwareContainer.h"
#include "core/tree/ILazyInitContainer.h"
#include "core/tree/ITemplateActivatorContainer.h"
#include "core/tree/UnitableContainer.h"

#include <memory>
#include <string>

namespace ZemTree {

class NodeTemplateActivator;

// Base of every container of the relay tree. A container is created empty and builds its fixed structure on
// the first initContainer(); it remembers the template it was built from, so that a saved file names it in
// `TemplateXml` and a reader can rebuild the structure from it; it keeps its hierarchical mode, and the
// hardware and action engine handed down from the host.
class UnitableStructureContainer : public UnitableContainer,
                                   public ILazyInitContainer,
                                   public virtual IEditableHardwareContainer,
                                   public virtual IActionEngineAPIContainer,
                                   public virtual ITemplateActivatorContainer {
public:
    UnitableStructureContainer();
    explicit UnitableStructureContainer(const std::string& id);
    UnitableStructureContainer(const std::string& id, const LocalString& description, const LocalString& secondText);
    ~UnitableStructureContainer() override;

    // Builds the fixed structure once: this class's children first, then each child's own, then the locks from
    // the leaves up. A second call does nothing.
    void initContainer() override;

    // Compares first; on a change stores and emits the hardware signal. Does not look at the parents.
    void setHardware(ZemDevice::HardwareManager* hardware) override;
    ZemDevice::HardwareManager* getHardware() const override { return _hardware; }
    IActionEngineAPI* getActionEngineAPI() override { return _actionEngineAPI; }
    void setActionEngineAPI(IActionEngineAPI* api) { _actionEngineAPI = api; }

    // A container with a fixed mode refuses any other mode.
    virtual bool hasFixedHierarchicalMode() const { return false; }
    ContainerHierarchicalMode getHierarchicalMode() const { return _hierarchicalMode; }
    // Setting the current mode is no change and never refused, so a reader may set it blindly. Another mode on
    // a fixed container throws std::logic_error("Hierarchical mode is fixed").
    void setHierarchicalMode(ContainerHierarchicalMode mode);

    void setTemplateActivator(NodeTemplateActivator* activator) override { _templateActivator = activator; }
    NodeTemplateActivator* getTemplateActivator() override { return _templateActivator; }

    bool isInited() const { return _isInited; }

    // Writes `TemplateXml` beside the node's own attributes when the container was built from a template:
    // always in a project, in a template only below its root, since a template's root is the template itself.
    xmlpp::Element* getXml(xmlpp::Element* parent, const SerializationMode& mode) const override;
    // A container read from a file builds its fixed structure first, so the saved sections find their nodes.
    // A `TemplateXml` then rebuilds the structure from that template, and the file's own values go over it.
    void setXml(xmlpp::Element* own, const SerializationMode& mode) override;

protected:
    // Builds this class's fixed children. Each override calls its base first.
    virtual void _fillTemplate() {}
    // Runs once everything below is built; subclasses lock what they built here.
    virtual void _onTemplateFilled() {}
    // Writes the report attribute `Mode` of the hierarchical mode.
    virtual void _getDisplayXmlCurrentMode(xmlpp::Element* element) const;

    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override;
    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override;
    xmlpp::Element* _getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const override;

    // Sets the mode without the fixed-mode guard: for constructors, where the final class's answer to
    // hasFixedHierarchicalMode() is not reachable yet.
    void _initHierarchicalMode(ContainerHierarchicalMode mode) { _hierarchicalMode = mode; }

    // The text of a mode in files and reports: "Parameters" for Parameters, "Settings" otherwise.
    static const char* _getHierarchicalModeText(ContainerHierarchicalMode mode);

private:
    bool _isInited = false;
    IActionEngineAPI* _actionEngineAPI = nullptr;
    ZemDevice::HardwareManager* _hardware = nullptr;
    ContainerHierarchicalMode _hierarchicalMode = ContainerHierarchicalMode::None;
    NodeTemplateActivator* _templateActivator = nullptr;
    std::unique_ptr<NodeTemplateActivator> _ownTemplateActivator;
};

} // namespace ZemTree
