#pragma once

#include "contacts/ContactCollectionUnit.h"

#include <memory>
#include <string>

namespace ZemTree {

// The contact elements of a test on the binary outputs of the test set, which drive the inputs of the relay
// under test.
class HardwareOutContactCollectionUnit : public ContactCollectionUnit {
public:
    HardwareOutContactCollectionUnit(const std::string& id, const LocalString& description,
                                     const LocalString& secondText, Data defaultData,
                                     std::shared_ptr<EnumLimiter> limiter);
    explicit HardwareOutContactCollectionUnit(const std::string& id);
    HardwareOutContactCollectionUnit();

protected:
    std::string _getChannelType() const override;
};

} // namespace ZemTree
