#pragma once

#include "core/common/Nullable.h"
#include "presentation/frame/IView.h"

#include <string>

namespace Zem {

// The verdict cell of a result: a short text, its details as a tooltip, and whether the result is good.
class IResultStateView : public virtual IView {
public:
    virtual void setText(const std::string& text) = 0;
    virtual void setTooltip(const std::string& tooltip) = 0;
    // True: accepted; false: rejected or unusable; no value: not tested.
    virtual void setState(const Nullable<bool>& state) = 0;
};

} // namespace Zem
