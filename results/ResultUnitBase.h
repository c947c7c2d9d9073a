#pragma once

#include "core/common/XmlInclude.h"
#include "core/tree/LocalString.h"
#include "results/IResultUnit.h"
#include "results/ResultBase.h"
#include "values/Unit.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace ZemTree {

// The node that holds one shared multi result in a test's Results section. A test writes a new result by setting
// the unit's value and reads or empties its outcome through IResultUnit; a null result means "not tested".
// `T` is a std::shared_ptr to a multi result, whose first base is ResultBase.
template <class T> class ResultUnitBase : public Unit<T>, public IResultUnit {
public:
    ResultUnitBase(const std::string& id, const LocalString& description, const LocalString& secondText, T defaultData)
        : Unit<T>(id, description, secondText, std::move(defaultData))
    {
    }

    // Through the value's own setter, so that the value's listeners hear of it.
    void clearResult() override { this->setData(T()); }

    // The result that the value shows now, or null.
    ResultBase* getResultValue() override { return this->getValue().get(); }

protected:
    // The result element is the first child node of the value element, of any name. A value element without
    // children, or whose first child is no element, holds no result. A result element that the converter does
    // not accept throws std::runtime_error with `parseErrorText`, which the unit's reading reports and goes on.
    template <class Converter> T _readResultXml(xmlpp::Element* element, const char* parseErrorText) const
    {
        if (element == nullptr)
            return T();
        const xmlpp::Node* const first = element->get_first_child();
        const auto* const resultElement = dynamic_cast<const xmlpp::Element*>(first);
        if (resultElement == nullptr)
            return T();
        T result;
        if (!Converter::fromXmlData(resultElement, result))
            throw std::runtime_error(std::string(parseErrorText) + ": the element " + resultElement->get_name()
                                     + " holds no valid result");
        return result;
    }

    // A null result writes nothing.
    template <class Converter> void _writeResultXml(const T& data, xmlpp::Element* element) const
    {
        if (data == nullptr || element == nullptr)
            return;
        Converter::toXmlData(*data, element);
    }

    // A report states the verdict in State; this flag is written for an empty result only, and is then always
    // "false", because an empty result is never Ok.
    static void _setReportIsValid(const ResultBase& result, xmlpp::Element* element)
    {
        if (!result.isEmpty())
            return;
        element->set_attribute(reportIsValidAttribute, result.getState() == ResultState::Ok ? "true" : "false");
    }

    // Key, State and IsValid of one item of a report's Items.
    static xmlpp::Element* _addReportItem(xmlpp::Element* items, const std::string& key, const ResultBase& result)
    {
        xmlpp::Element* const item = items->add_child(reportValueName);
        item->set_attribute(reportKeyAttribute, key);
        item->set_attribute(reportStateAttribute, result.getStateDescription());
        _setReportIsValid(result, item);
        return item;
    }

    // The result to report: null when there is none or when it is empty.
    const typename T::element_type* _getReportedResult() const
    {
        const T& result = this->getValue();
        if (result == nullptr || result->isEmpty())
            return nullptr;
        return result.get();
    }

    // Names of the report's elements and attributes shared by the result units.
    static constexpr const char* reportValueName = "Value";
    static constexpr const char* reportItemsName = "Items";
    static constexpr const char* reportKeyAttribute = "Key";
    static constexpr const char* reportStateAttribute = "State";
    static constexpr const char* reportIsValidAttribute = "IsValid";
};

} // namespace ZemTree
