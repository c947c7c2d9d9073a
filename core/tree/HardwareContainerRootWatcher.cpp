#include "core/tree/HardwareContainerRootWatcher.h"

#include <sigc++/functors/mem_fun.h>

namespace ZemTree {

namespace {

// Starts at the parent, so that a node that is a hardware container itself never finds its own hardware; an
// ancestor without hardware is passed over.
ZemDevice::HardwareManager* _findHardware(Node* node)
{
    if (node == nullptr)
        return nullptr;
    for (Node* ancestor = node->getParent(); ancestor != nullptr; ancestor = ancestor->getParent()) {
        const auto* container = dynamic_cast<const IHardwareContainer*>(ancestor);
        if (container == nullptr)
            continue;
        if (ZemDevice::HardwareManager* hardware = container->getHardware())
            return hardware;
    }
    return nullptr;
}

} // namespace

HardwareContainerRootWatcher::HardwareContainerRootWatcher(Node* node) : _node(node)
{
    if (_node != nullptr)
        _node->getSignalHierarchicalPositionChanged().connect(
            sigc::mem_fun(*this, &HardwareContainerRootWatcher::_onHierarchicalPositionChanged));
}

ZemDevice::HardwareManager* HardwareContainerRootWatcher::getHardware() const
{
    return _findHardware(_node);
}

void HardwareContainerRootWatcher::_setHardware(ZemDevice::HardwareManager* hardware)
{
    if (hardware == _hardware)
        return;
    _hardware = hardware;
    _signalHardwareChanged.emit();
}

void HardwareContainerRootWatcher::_updateParentHardware()
{
    _setHardware(_findHardware(_node));
}

// Every hardware container above is watched, not only the nearest with hardware: a nearer one may get hardware
// later and then decides.
void HardwareContainerRootWatcher::_onHierarchicalPositionChanged(Node* /*source*/, Node::Args& /*args*/)
{
    _connections.disconnectAll();
    for (Node* ancestor = _node->getParent(); ancestor != nullptr; ancestor = ancestor->getParent()) {
        auto* container = dynamic_cast<IHardwareContainer*>(ancestor);
        if (container == nullptr)
            continue;
        _connections.connect(ancestor, container->getSignalHardwareChanged().connect(
                                           sigc::mem_fun(*this, &HardwareContainerRootWatcher::_updateParentHardware)));
    }
    _updateParentHardware();
}

} // namespace ZemTree
