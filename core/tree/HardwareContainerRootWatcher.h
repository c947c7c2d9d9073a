#pragma once

#include "core/common/PointerConnectionsDispatcher.h"
#include "core/tree/IHardwareContainer.h"
#include "core/tree/Node.h"

#include <sigc++/signal.h>
#include <sigc++/trackable.h>

namespace ZemTree {

// Finds the hardware that applies to a node: the nearest ancestor that has some. A unit that works with
// hardware channels keeps one as a member; the watcher follows the node through the tree, listens to the hardware
// of every ancestor that may carry one, and tells the unit when the answer changes.
//
// Until the node first moves, the watcher listens to no ancestor and has published nothing, while getHardware()
// already answers, since it always looks the hardware up afresh.
class HardwareContainerRootWatcher : public virtual IHardwareContainer, public virtual sigc::trackable {
public:
    // `node` is the watched node, normally the owner of this watcher; it must outlive the watcher.
    explicit HardwareContainerRootWatcher(Node* node);
    HardwareContainerRootWatcher(const HardwareContainerRootWatcher&) = delete;
    HardwareContainerRootWatcher& operator=(const HardwareContainerRootWatcher&) = delete;

    // The nearest hardware above the node, its own never included; null when no ancestor has any.
    ZemDevice::HardwareManager* getHardware() const override;

    // Fires once per change of the published hardware, after it is stored.
    sigc::signal<void>& getSignalParentHardwareChanged() { return _signalHardwareChanged; }

private:
    void _setHardware(ZemDevice::HardwareManager* hardware);
    void _updateParentHardware();
    void _onHierarchicalPositionChanged(Node* source, Node::Args& args);

    Node* _node;
    ZemDevice::HardwareManager* _hardware = nullptr;
    Zem::PointerConnectionsDispatcher _connections;
};

} // namespace ZemTree
