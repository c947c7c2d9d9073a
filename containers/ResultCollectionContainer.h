#pragma once

#include "containers/UnitContainer.h"

#include <string>

namespace ZemTree {

// The `Results` section of a test: the result units. Unlike the other sections it can be reopened.
class ResultCollectionContainer : public UnitContainer {
public:
    ResultCollectionContainer();
    explicit ResultCollectionContainer(const std::string& id);
    ResultCollectionContainer(const std::string& id, const LocalString& description, const LocalString& secondText);

    bool hasFixedHierarchicalMode() const override { return true; }
    void unlockContainer() { _unlockContainer(); }

protected:
    // Results report as "Results", whatever their mode inside.
    void _getDisplayXmlCurrentMode(xmlpp::Element* element) const override;
    std::string _getDisplayXmlCurrentDataType() const override { return "ResultContainer"; }
};

} // namespace ZemTree
