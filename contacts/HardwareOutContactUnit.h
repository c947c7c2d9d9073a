#pragma once

#include "contacts/ContactUnit.h"

#include <string>

namespace ZemTree {

// A contact unit on a binary output of the test set, which drives an input of the relay under test.
class HardwareOutContactUnit : public ContactUnit {
public:
    HardwareOutContactUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                           Data defaultData);
    explicit HardwareOutContactUnit(const std::string& id);
    HardwareOutContactUnit();
};

} // namespace ZemTree
