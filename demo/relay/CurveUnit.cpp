#include "relay/CurveUnit.h"

#include "core/common/XmlInclude.h"
#include "core/tree/EnumItem.h"
#include "core/tree/EnumLimiter.h"
#include "core/tree/ValueErrors.h"

#include <stdexcept>

namespace ZemDemo {

namespace {

const char* const dataAttribute = "Data";

} // namespace

CurveUnit::CurveUnit(const std::string& id, const ZemTree::LocalString& description, const std::string& defaultData)
    : ZemTree::EnumLimitedUnit<std::string>(id, description, ZemTree::LocalString::Empty(),
                                            static_cast<ZemTree::Node*>(nullptr))
{
    _fillCurves();
    setDefaultData(defaultData);
}

CurveUnit::CurveUnit() : CurveUnit("Curve", ZemTree::LocalString::Empty(), "standard") {}

void CurveUnit::_fillCurves()
{
    ZemTree::EnumLimiter* const limiter = getLimiter();
    using ZemTree::LocalString;
    limiter->addItem("standard", LocalString::create("Standard inverse", "Нормально инверсная"));
    limiter->addItem("very", LocalString::create("Very inverse", "Сильно инверсная"));
    limiter->addItem("extremely", LocalString::create("Extremely inverse", "Чрезвычайно инверсная"));
}

std::unique_ptr<Zem::Out<std::string>> CurveUnit::_coerceValueOut(std::unique_ptr<Zem::Out<std::string>> out) const
{
    if (out->error || getLimiter()->contains(out->value))
        return out;
    out->error = std::make_shared<ZemTree::OutOfRangeError>("the curve \"" + out->value
                                                            + "\" is not standard, very or extremely");
    return out;
}

std::string CurveUnit::_createDataFromXml(xmlpp::Element* element) const
{
    const xmlpp::Attribute* const data = element->get_attribute(dataAttribute);
    if (data == nullptr)
        throw std::runtime_error("Setting " + getId() + " has no Data");
    return data->get_value();
}

void CurveUnit::_getDataXml(const std::string& data, xmlpp::Element* element) const
{
    element->set_attribute(dataAttribute, data);
}

void CurveUnit::_getDisplayXmlCurrentValue(ZemTree::DisplayXmlParameters& /*parameters*/, xmlpp::Element* element) const
{
    const std::string& value = getValueOut().value;
    const ZemTree::EnumItem* const item = getLimiter()->findByValue(value);
    element->set_attribute("Value", item != nullptr ? item->getDisplay().getValue() : value);
}

} // namespace ZemDemo
