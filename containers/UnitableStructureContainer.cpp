#include "containers/UnitableStructureContainer.h"

#include "core/common/PathHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/NodeTemplateActivator.h"
#include "core/tree/NodeTemplateActivatorCollection.h"
#include "core/tree/SerializationMode.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace ZemTree {

namespace {

// The templates being applied on this thread, innermost last. A template that names itself below its root
// would otherwise be applied without end.
thread_local std::vector<const NodeTemplateActivator*> templatesInFill;

class TemplateFillGuard {
public:
    explicit TemplateFillGuard(const NodeTemplateActivator* activator) { templatesInFill.push_back(activator); }
    ~TemplateFillGuard() { templatesInFill.pop_back(); }
    TemplateFillGuard(const TemplateFillGuard&) = delete;
    TemplateFillGuard& operator=(const TemplateFillGuard&) = delete;

    static bool isInFill(const NodeTemplateActivator* activator)
    {
        return std::find(templatesInFill.begin(), templatesInFill.end(), activator) != templatesInFill.end();
    }
};

const char* const templateXmlAttribute = "TemplateXml";
const char* const hierarchicalModeAttribute = "NodeHierarchicalMode";
const char* const modeAttribute = "Mode";

} // namespace

UnitableStructureContainer::UnitableStructureContainer() : UnitableStructureContainer("UnitableStructureContainer") {}

UnitableStructureContainer::UnitableStructureContainer(const std::string& id)
    : UnitableStructureContainer(id, LocalString::Empty(), LocalString::Empty())
{
}

UnitableStructureContainer::UnitableStructureContainer(const std::string& id, const LocalString& description,
                                                       const LocalString& secondText)
    : UnitableContainer(id, description, secondText)
{
}

UnitableStructureContainer::~UnitableStructureContainer() = default;

void UnitableStructureContainer::initContainer()
{
    if (_isInited)
        return;
    _fillTemplate();
    // A copy: a child's own filling must not disturb this walk.
    const std::vector<Node*> children = _items;
    for (Node* child : children) {
        if (auto* lazy = dynamic_cast<ILazyInitContainer*>(child))
            lazy->initContainer();
    }
    _isInited = true;
    _onTemplateFilled();
}

void UnitableStructureContainer::setHardware(ZemDevice::HardwareManager* hardware)
{
    if (hardware == _hardware)
        return;
    _hardware = hardware;
    _signalHardwareChanged.emit();
}

void UnitableStructureContainer::setHierarchicalMode(ContainerHierarchicalMode mode)
{
    if (mode == _hierarchicalMode)
        return;
    if (hasFixedHierarchicalMode())
        throw std::logic_error("Hierarchical mode is fixed");
    _hierarchicalMode = mode;
}

xmlpp::Element* UnitableStructureContainer::getXml(xmlpp::Element* parent, const SerializationMode& mode) const
{
    xmlpp::Element* const element = Node::getXml(parent, mode);
    if (element == nullptr || _templateActivator == nullptr)
        return element;
    if (mode.kind == SerializationMode::User || (mode.kind == SerializationMode::System && getParent() != nullptr))
        element->set_attribute(templateXmlAttribute,
                               Zem::getPathFileNameWithoutExtension(_templateActivator->getPath()));
    return element;
}

void UnitableStructureContainer::setXml(xmlpp::Element* own, const SerializationMode& mode)
{
    if (own != nullptr)
        initContainer();

    const bool mayBind =
        _templateActivator == nullptr || (mode.kind == SerializationMode::User && getParent() == nullptr);
    const xmlpp::Attribute* const templateXml = own != nullptr ? own->get_attribute(templateXmlAttribute) : nullptr;
    std::string missingTemplate;
    if (mayBind && templateXml != nullptr) {
        const std::string name = templateXml->get_value();
        // Templates come from the template folder only; a name with a folder in it never reaches outside.
        const std::string savedName = Zem::getPathFileNameWithoutExtension(name);
        if (name.find_first_of("/\\") != std::string::npos)
            _onSerializationError("the template name '" + name + "' names a path outside the template folder; only '"
                                      + savedName + "' is looked for there, and the project saves the name '"
                                      + savedName + "'",
                                  mode);
        NodeTemplateActivatorCollection& templates = NodeTemplateActivatorCollection::instance();
        _templateActivator = mode.kind == SerializationMode::System ? templates.getAssociatedSystemActivator(this, name)
                                                                    : templates.getAssociatedUserActivator(this, name);
        if (_templateActivator != nullptr && TemplateFillGuard::isInFill(_templateActivator)) {
            _onSerializationError("the template '" + name + "' contains itself; it is not applied again", mode);
        }
        else if (_templateActivator != nullptr) {
            const TemplateFillGuard guard(_templateActivator);
            if (mode.kind == SerializationMode::User) {
                // The structure comes from the template as a template read; its problems are not the project's.
                std::vector<std::string> templateProblems;
                SerializationMode templateMode;
                templateMode.kind = SerializationMode::System;
                templateMode.flag1 = true;
                templateMode.flag2 = mode.flag2;
                templateMode.problems = &templateProblems;
                if (!_templateActivator->fill(this, templateMode) && !templateProblems.empty())
                    _onSerializationError("the template '" + name + "' cannot be applied: " + templateProblems.back()
                                              + "; the structure comes from the project alone",
                                          mode);
            }
            else {
                _templateActivator->fill(this, mode);
            }
        }
        else {
            // Remembers the name, so that a later save writes the same `TemplateXml`. A name with a folder in it
            // was told of above.
            _ownTemplateActivator = std::make_unique<NodeTemplateActivator>(nullptr, "", name);
            _templateActivator = _ownTemplateActivator.get();
            if (name.find_first_of("/\\") == std::string::npos)
                missingTemplate = name;
        }
    }
    Node::setXml(own, mode);
    // The tree is usable, but this part of its structure came from the file alone, which the user should hear of;
    // told once the node's id is read, so that the problem names it by its path.
    if (!missingTemplate.empty())
        _onSerializationError("the template '" + missingTemplate
                                  + "' is not in the template folder; its saved values are read and the name '"
                                  + Zem::getPathFileNameWithoutExtension(missingTemplate) + "' is saved",
                              mode);
}

void UnitableStructureContainer::_getDisplayXmlCurrentMode(xmlpp::Element* element) const
{
    if (_hierarchicalMode == ContainerHierarchicalMode::None)
        return;
    element->set_attribute(modeAttribute, _getHierarchicalModeText(_hierarchicalMode));
}

void UnitableStructureContainer::_setExtendedXml(xmlpp::Element* own, const SerializationMode& mode)
{
    Unitable::_setExtendedXml(own, mode);
    if (mode.kind != SerializationMode::System || hasFixedHierarchicalMode())
        return;
    const xmlpp::Attribute* const attribute = own->get_attribute(hierarchicalModeAttribute);
    const std::string text = attribute != nullptr ? std::string(attribute->get_value()) : std::string();
    if (text == "Parameters")
        setHierarchicalMode(ContainerHierarchicalMode::Parameters);
    else if (text == "Settings")
        setHierarchicalMode(ContainerHierarchicalMode::Settings);
    else
        setHierarchicalMode(ContainerHierarchicalMode::None);
}

void UnitableStructureContainer::_getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    Unitable::_getExtendedXml(own, mode);
    if (mode.kind != SerializationMode::System || hasFixedHierarchicalMode()
        || _hierarchicalMode == ContainerHierarchicalMode::None)
        return;
    own->set_attribute(hierarchicalModeAttribute, _getHierarchicalModeText(_hierarchicalMode));
}

xmlpp::Element* UnitableStructureContainer::_getDisplayXmlCurrent(DisplayXmlParameters& parameters,
                                                                  xmlpp::Element* parent) const
{
    xmlpp::Element* const element = Unitable::_getDisplayXmlCurrent(parameters, parent);
    if (element != nullptr)
        _getDisplayXmlCurrentMode(element);
    return element;
}

const char* UnitableStructureContainer::_getHierarchicalModeText(ContainerHierarchicalMode mode)
{
    return mode == ContainerHierarchicalMode::Parameters ? "Parameters" : "Settings";
}

} // namespace ZemTree
