#include "contacts/HardwareOutContactCollectionUnit.h"

#include "contacts/HardwareBasedUnitHelper.h"
#include "core/tree/TreeLocalization.h"

#include <utility>

namespace ZemTree {

HardwareOutContactCollectionUnit::HardwareOutContactCollectionUnit(const std::string& id,
                                                                   const LocalString& description,
                                                                   const LocalString& secondText, Data defaultData,
                                                                   std::shared_ptr<EnumLimiter> limiter)
    : ContactCollectionUnit(id, description, secondText, std::move(defaultData), std::move(limiter))
{
}

HardwareOutContactCollectionUnit::HardwareOutContactCollectionUnit(const std::string& id)
    : HardwareOutContactCollectionUnit(id, LocalString(std::string(lng::Tree::get("Units.zemolOutCollection"))),
                                       LocalString::Empty(), nullptr, std::shared_ptr<EnumLimiter>())
{
}

HardwareOutContactCollectionUnit::HardwareOutContactCollectionUnit()
    : HardwareOutContactCollectionUnit("HardwareOutContactCollectionUnit")
{
}

std::string HardwareOutContactCollectionUnit::_getChannelType() const
{
    return HardwareBasedUnitHelper::HardwareBinaryOutputType;
}

} // namespace ZemTree
