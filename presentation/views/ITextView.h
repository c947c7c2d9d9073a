#pragma once

#include "presentation/frame/IView.h"

#include <string>

namespace ZemTree {

// A line of read-only text.
class ITextView : public virtual Zem::IView {
public:
    virtual void setText(const std::string& text) = 0;
};

} // namespace ZemTree
