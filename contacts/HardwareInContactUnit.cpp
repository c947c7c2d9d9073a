#include "contacts/HardwareInContactUnit.h"

#include "contacts/HardwareBasedUnitHelper.h"
#include "core/tree/StringProperty.h"
#include "core/tree/TreeLocalization.h"

#include <utility>

namespace ZemTree {

// The family is set through the property, so the unit starts with the first channel of it.
HardwareInContactUnit::HardwareInContactUnit(const std::string& id, const LocalString& description,
                                             const LocalString& secondText, Data defaultData)
    : ContactUnit(id, description, secondText, std::move(defaultData))
{
    getChannelTypeProperty()->setData(HardwareBasedUnitHelper::HardwareBinaryInputType);
}

HardwareInContactUnit::HardwareInContactUnit(const std::string& id)
    : HardwareInContactUnit(id, LocalString(std::string(lng::Tree::get("Units.zemolIn"))), LocalString::Empty(),
                            nullptr)
{
}

HardwareInContactUnit::HardwareInContactUnit() : HardwareInContactUnit("HardwareInContactUnit") {}

} // namespace ZemTree
