#pragma once

#include <sigc++/signal.h>
#include <sigc++/trackable.h>

namespace ZemTree {

class Measure;
class MeasureProperty;

// A handle on a measure property for those who only read the measure (a result unit and its presenter). It
// follows the property's current measure and forgets the property when the property is destroyed.
class MeasureObject : public sigc::trackable {
public:
    explicit MeasureObject(MeasureProperty* property);
    ~MeasureObject();
    MeasureObject(const MeasureObject&) = delete;
    MeasureObject& operator=(const MeasureObject&) = delete;

    // The property itself, null once it is destroyed.
    MeasureProperty* getMeasure() const { return _property; }
    // The property's measure; Measures::None() without a property or when the property holds null.
    Measure* getMeasureValue() const;

    // Fires after the property's measure changed.
    sigc::signal<void>& getSignalMeasureChanged() { return _signalMeasureChanged; }

private:
    static void* _onPropertyDestroyed(void* data);

    MeasureProperty* _property;
    sigc::signal<void> _signalMeasureChanged;
};

} // namespace ZemTree
