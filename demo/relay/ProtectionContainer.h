#pragma once

#include "containers/DefendContainer.h"
#include "evaluation/IHierarchicalContainer.h"

#include <string>

namespace ZemTree {
class NumericUnit;
class Measure;
} // namespace ZemTree

namespace ZemDemo {

// A protection of the sample project: its tests stand in its `Tests` section, and it stands in a substation.
// Its kinds (overcurrent, distance, contacts) also hold the relay's own settings of that protection in their
// `Settings` section: the test object that the tests' expected values refer to.
class ProtectionContainer : public ZemTree::DefendContainer, public virtual ZemTree::IHierarchicalContainer {
public:
    ProtectionContainer();
    ProtectionContainer(const std::string& id, const ZemTree::LocalString& description);

protected:
    explicit ProtectionContainer(const char* className);
    // Adds a number to the `Settings` section; only while the template is filled.
    ZemTree::NumericUnit* _addSetting(const std::string& id, const ZemTree::LocalString& description, double value,
                                      ZemTree::Measure* measure, double minimum);
};

} // namespace ZemDemo
