#include "core/tree/MeasureObject.h"

#include "core/tree/MeasureProperty.h"
#include "core/tree/Measures.h"

#include <sigc++/functors/mem_fun.h>

namespace ZemTree {

MeasureObject::MeasureObject(MeasureProperty* property) : _property(property)
{
    if (_property == nullptr)
        return;
    _property->add_destroy_notify_callback(this, &MeasureObject::_onPropertyDestroyed);
    _property->getSignalValueChanged().connect(_signalMeasureChanged.make_slot());
}

MeasureObject::~MeasureObject()
{
    if (_property != nullptr)
        _property->remove_destroy_notify_callback(this);
}

Measure* MeasureObject::getMeasureValue() const
{
    if (_property == nullptr || _property->getValue() == nullptr)
        return Measures::None();
    return _property->getValue();
}

void* MeasureObject::_onPropertyDestroyed(void* data)
{
    static_cast<MeasureObject*>(data)->_property = nullptr;
    return nullptr;
}

} // namespace ZemTree
