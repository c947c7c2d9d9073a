#pragma once

#include "XmlTestSupport.h"
#include "collections/IStructureChanged.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/device/HardwareManager.h"
#include "core/tree/IEditableHardwareContainer.h"
#include "core/tree/IValueOut.h"
#include "core/tree/Node.h"
#include "core/tree/SerializationMode.h"

#include <sigc++/connection.h>

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// Nodes and helpers shared by the tests of the hardware watcher and the hardware-bound units.
namespace ContactUnitsTest {

using ZemTreeTest::loadFromString;
using ZemTreeTest::makeMode;
using ZemTreeTest::saveToString;

// A plain node to which a test hands hardware, as the host hands it to a container.
class HardwareNode : public ZemTree::Node, public virtual ZemTree::IEditableHardwareContainer {
public:
    explicit HardwareNode(const std::string& id = "Root", ZemDevice::HardwareManager* hardware = nullptr)
        : ZemTree::Node(id), _hardware(hardware)
    {
    }

    void setHardware(ZemDevice::HardwareManager* hardware) override
    {
        if (hardware == _hardware)
            return;
        _hardware = hardware;
        _signalHardwareChanged.emit();
    }
    ZemDevice::HardwareManager* getHardware() const override { return _hardware; }

    // The hardware signal without a change, as a careless container might send it.
    void announceUnchanged() { _signalHardwareChanged.emit(); }

private:
    ZemDevice::HardwareManager* _hardware;
};

// Moves `node` from its parent to `target`, as a user drags it in the tree.
template <class T> T* moveTo(T* node, ZemTree::Node* target)
{
    std::unique_ptr<ZemTree::Node> released = node->getParent()->release(node);
    return static_cast<T*>(target->add(std::move(released)));
}

// Counts the emissions of one signal for as long as it lives.
class SignalCounter {
public:
    explicit SignalCounter(sigc::signal<void>& signal) : _connection(signal.connect([this] { ++count; })) {}
    explicit SignalCounter(ZemTree::IStructureChanged& source) : SignalCounter(source.getSignalStructureChanged()) {}
    explicit SignalCounter(ZemTree::IValueOut& value) : SignalCounter(value.getSignalValueOutChanged()) {}
    ~SignalCounter() { _connection.disconnect(); }
    SignalCounter(const SignalCounter&) = delete;
    SignalCounter& operator=(const SignalCounter&) = delete;

    // Returns the count since the last call.
    int take()
    {
        const int taken = count;
        count = 0;
        return taken;
    }

    int count = 0;

private:
    sigc::connection _connection;
};

// A test set of `inputs` binary input groups of 8, `outputs` binary output groups of 8 and `analog` analog groups.
inline ZemDevice::HardwareLayout makeLayout(std::size_t inputs, std::size_t outputs, std::size_t analog)
{
    ZemDevice::HardwareLayout layout;
    layout.binaryInputGroups.assign(inputs, ZemDevice::HardwareGroupLayout{8, "", {}});
    layout.binaryOutputGroups.assign(outputs, ZemDevice::HardwareGroupLayout{8, "", {}});
    layout.analogOutputGroups.assign(analog, ZemDevice::HardwareGroupLayout{3, "", {}});
    return layout;
}

// A collection read from its text form; a text that does not read fails the test.
template <class Collection> std::shared_ptr<Collection> collectionOf(const std::string& text)
{
    std::shared_ptr<Collection> collection;
    if (!Zem::tryConvert<std::shared_ptr<Collection>, true, true>(text, collection))
        ADD_FAILURE() << "unreadable collection text " << text;
    return collection;
}

// The text form of a collection, "null" for none.
template <class Collection> std::string textOf(const std::shared_ptr<Collection>& collection)
{
    return collection ? Zem::convertToString<std::shared_ptr<Collection>, true, true>(collection) : std::string("null");
}

} // namespace ContactUnitsTest
