#pragma once

#include "XmlTestSupport.h"
#include "core/common/XmlInclude.h"
#include "core/tree/Node.h"
#include "core/tree/UnitableContainer.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// Node types shared by the tree tests. They open the protected hooks of the core to the tests.
namespace TreeTest {

// A node that refuses no child but TestForbidden, and lets a test lock it the way the system does.
class TestGroup : public ZemTree::UnitableContainer {
public:
    explicit TestGroup(const std::string& id = "TestGroup",
                       const ZemTree::LocalString& description = ZemTree::LocalString::Empty())
        : UnitableContainer(id, description)
    {
    }

    bool canContains(ZemTree::Node* item) override;

    void lockContainer() { _lockContainer(); }
    void unlockContainer() { _unlockContainer(); }
    void lockChildContainer(ZemTree::Node* child) { _lockChildContainer(child); }
    ZemTree::Node* addPropertyInner(std::unique_ptr<ZemTree::Node> property)
    {
        return _addPropertyInner(std::move(property));
    }

    int systemLockedCount = 0;

protected:
    void _onSystemLocked() override
    {
        ++systemLockedCount;
        UnitableContainer::_onSystemLocked();
    }
};

// The one type a TestGroup refuses.
class TestForbidden : public ZemTree::Node {
public:
    TestForbidden() : Node("Forbidden") {}
};

// A leaf with a number of its own, saved as `Weight`, and counters of the hooks it was told about.
class TestItem : public ZemTree::Unitable {
public:
    explicit TestItem(const std::string& id = "TestItem") : Unitable(id) {}

    int weight = 0;
    int parentChangedCount = 0;
    int systemLockedCount = 0;
    std::vector<bool> parentLockedCalls;

protected:
    void _getExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) const override
    {
        Unitable::_getExtendedXml(own, mode);
        own->set_attribute("Weight", std::to_string(weight));
    }
    void _setExtendedXml(xmlpp::Element* own, const ZemTree::SerializationMode& mode) override
    {
        Unitable::_setExtendedXml(own, mode);
        if (const xmlpp::Attribute* value = own->get_attribute("Weight"))
            weight = std::stoi(value->get_value()); // Throws on garbage: the frame must report it.
    }
    void _onParentChanged() override { ++parentChangedCount; }
    void _setIsParentCollectionLocked(bool isLocked) override
    {
        parentLockedCalls.push_back(isLocked);
        Unitable::_setIsParentCollectionLocked(isLocked);
    }
    void _onSystemLocked() override
    {
        ++systemLockedCount;
        Unitable::_onSystemLocked();
    }
};

using ZemTreeTest::loadFromString;
using ZemTreeTest::makeMode;
using ZemTreeTest::saveToString;

} // namespace TreeTest
