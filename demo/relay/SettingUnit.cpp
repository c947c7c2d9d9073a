#include "relay/SettingUnit.h"

#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/NodeFactory.h"

#include <stdexcept>

namespace ZemDemo {

SettingUnit::SettingUnit() : SettingUnit("Setting", ZemTree::LocalString::Empty(), 0.0, nullptr) {}

SettingUnit::SettingUnit(const std::string& id, const ZemTree::LocalString& description, double value,
                         ZemTree::Measure* measure)
    : ZemTree::Unit<double>(id, description, ZemTree::LocalString::Empty(), value), _measure(measure)
{
}

double SettingUnit::_createDataFromXml(xmlpp::Element* element) const
{
    const xmlpp::Attribute* const data = element->get_attribute("Data");
    if (data == nullptr)
        throw std::runtime_error("Setting " + getId() + " has no Data");
    double value = 0.0;
    if (!Zem::fromText(std::string(data->get_value()), value))
        throw std::runtime_error("Setting " + getId() + " is not a number: " + std::string(data->get_value()));
    return value;
}

void SettingUnit::_getDataXml(const double& data, xmlpp::Element* element) const
{
    element->set_attribute("Data", Zem::convertToString<double, true>(data, 6));
}

} // namespace ZemDemo
