#pragma once

#include "collections/IStructureChanged.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/Node.h"
#include "values/EnumLimitedUnit.h"
#include "values/Unit.h"
#include "values/Value.h"

#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

// Data types and value and unit subclasses shared by the value tests. The subclasses give the test types an XML
// data form (attribute `Data`, in the text form of the type) and open the protected hooks.
namespace ValueTest {

// A data object with a text form "TD:<number>" that tells about changes made in place.
class TestData : public ZemTree::IStructureChanged {
public:
    explicit TestData(int number = 0) : _number(number) {}

    int getNumber() const { return _number; }
    // An edit in place: the object stays, its structure signal fires.
    void change(int number)
    {
        _number = number;
        signalStructureChanged.emit();
    }

    void operator>>(std::ostringstream& stream) const { stream << "TD:" << _number; }
    void operator<<(std::istringstream& stream)
    {
        const std::string text = stream.str();
        if (text.rfind("TD:", 0) != 0) {
            stream.setstate(std::ios::badbit);
            return;
        }
        int number = 0;
        if (!Zem::tryConvert<int, true>(text.substr(3), number)) {
            stream.setstate(std::ios::badbit);
            return;
        }
        _number = number;
    }

private:
    int _number;
};

using TestDataPtr = std::shared_ptr<TestData>;

inline std::string describe(double value)
{
    return Zem::toText(value);
}
inline std::string describe(const std::string& value)
{
    return value;
}
inline std::string describe(const TestDataPtr& value)
{
    return value ? Zem::toText(value) : std::string("null");
}

// Reads the `Data` attribute in the text form of T; a missing or unreadable attribute is a parse error.
template <class T> T readDataAttribute(xmlpp::Element* element)
{
    const xmlpp::Attribute* const attribute = element->get_attribute("Data");
    if (attribute == nullptr)
        throw std::runtime_error("Data attribute missing");
    T data{};
    if (!Zem::fromText(std::string(attribute->get_value()), data))
        throw std::runtime_error("Data attribute unreadable");
    return data;
}

template <class T> void writeDataAttribute(const T& data, xmlpp::Element* element)
{
    if constexpr (ZemTree::IsNullableData<T>::value) {
        if (data == nullptr)
            return;
    }
    element->set_attribute("Data", Zem::toText(data));
}

// A value with an XML data form, a countable value-out computation and an optional default maker.
template <class T> class ProbeValue : public ZemTree::Value<T> {
public:
    explicit ProbeValue(ZemTree::IValueSource<T>* source, ZemTree::Node* node = nullptr)
        : ZemTree::Value<T>(node, source)
    {
    }

    using ZemTree::Value<T>::_buildFormula;
    using ZemTree::Value<T>::_getValueXml;
    using ZemTree::Value<T>::_setValueXml;
    using ZemTree::Value<T>::_switchValueSource;

    mutable int computations = 0;
    std::function<T()> makeDefault;

protected:
    std::unique_ptr<Zem::Out<T>> _coerceValueOut(std::unique_ptr<Zem::Out<T>> out) const override
    {
        ++computations;
        return out;
    }
    T _createDefaultData() const override
    {
        return makeDefault ? makeDefault() : ZemTree::Value<T>::_createDefaultData();
    }
    T _createDataFromXml(xmlpp::Element* element) const override { return readDataAttribute<T>(element); }
    void _getDataXml(const T& data, xmlpp::Element* element) const override { writeDataAttribute(data, element); }
};

// A unit with an XML data form and counted clones (a clone of TestData is a new object with the same number).
template <class T> class ProbeUnit : public ZemTree::Unit<T> {
public:
    ProbeUnit(const std::string& id, T defaultData)
        : ZemTree::Unit<T>(id, ZemTree::LocalString::Empty(), ZemTree::LocalString::Empty(), defaultData)
    {
    }
    explicit ProbeUnit(const std::string& id) : ZemTree::Unit<T>(id) {}

    using ZemTree::Value<T>::_buildFormula;

    mutable int clones = 0;

protected:
    T _cloneData(const T& data) const override
    {
        ++clones;
        if constexpr (std::is_same_v<T, TestDataPtr>)
            return data ? std::make_shared<TestData>(data->getNumber()) : data;
        else
            return data;
    }
    T _createDataFromXml(xmlpp::Element* element) const override { return readDataAttribute<T>(element); }
    void _getDataXml(const T& data, xmlpp::Element* element) const override { writeDataAttribute(data, element); }
};

// Collects the signals of a value as one line, "out(<value>);flag;data;formula;", where each value-out entry
// carries the value out seen by the slot.
template <class T> class SignalLog {
public:
    explicit SignalLog(ZemTree::Value<T>& value) : _value(value)
    {
        value.signalValueOutChanged.connect([this] { text += "out(" + describe(_value.getValue()) + ");"; });
        value.signalIsFormulaSourceChanged.connect([this] { text += "flag;"; });
        value.signalDataChanged.connect([this] { text += "data;"; });
        value.signalFormulaChanged.connect([this] { text += "formula;"; });
    }

    // Returns what was logged since the last call.
    std::string take()
    {
        std::string taken;
        taken.swap(text);
        return taken;
    }

    std::string text;

private:
    ZemTree::Value<T>& _value;
};

} // namespace ValueTest
