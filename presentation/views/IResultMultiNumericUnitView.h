#pragma once

#include "presentation/frame/IView.h"

#include <string>

namespace ZemTree {

// A multi numeric result unit: the result block and the unit of measure beside it.
class IResultMultiNumericUnitView : public virtual Zem::IView {
public:
    virtual void fill(Zem::IView* result) = 0;
    virtual void setMeasure(const std::string& measure) = 0;
};

} // namespace ZemTree
