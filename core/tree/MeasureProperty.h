#pragma once

#include "core/tree/TypedProperty.h"

#include <string>

namespace ZemTree {

class Measure;

// A measure property, such as the measure of a numeric result. Holds one of the shared Measures instances, or
// null; saved by the measure's key, null as the empty text.
class MeasureProperty : public TypedProperty<Measure*> {
public:
    explicit MeasureProperty(const std::string& id = "", const LocalString& description = LocalString::Empty(),
                             const LocalString& secondText = LocalString::Empty(), Measure* value = nullptr);
};

} // namespace ZemTree
