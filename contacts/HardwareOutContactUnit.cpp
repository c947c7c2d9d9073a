#include "contacts/HardwareOutContactUnit.h"

#include "contacts/HardwareBasedUnitHelper.h"
#include "core/tree/StringProperty.h"
#include "core/tree/TreeLocalization.h"

#include <utility>

namespace ZemTree {

// The family is set through the property, so the unit starts with the first channel of it.
HardwareOutContactUnit::HardwareOutContactUnit(const std::string& id, const LocalString& description,
                                               const LocalString& secondText, Data defaultData)
    : ContactUnit(id, description, secondText, std::move(defaultData))
{
    getChannelTypeProperty()->setData(HardwareBasedUnitHelper::HardwareBinaryOutputType);
}

HardwareOutContactUnit::HardwareOutContactUnit(const std::string& id)
    : HardwareOutContactUnit(id, LocalString(std::string(lng::Tree::get("Units.zemolOut"))), LocalString::Empty(),
                             nullptr)
{
}

HardwareOutContactUnit::HardwareOutContactUnit() : HardwareOutContactUnit("HardwareOutContactUnit") {}

} // namespace ZemTree
