#pragma once

#include "contacts/ContactUnit.h"

#include <string>

namespace ZemTree {

// A contact unit on a binary input of the test set, which the relay under test drives.
class HardwareInContactUnit : public ContactUnit {
public:
    HardwareInContactUnit(const std::string& id, const LocalString& description, const LocalString& secondText,
                          Data defaultData);
    explicit HardwareInContactUnit(const std::string& id);
    HardwareInContactUnit();
};

} // namespace ZemTree
