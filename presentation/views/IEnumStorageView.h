#pragma once

#include "presentation/frame/IView.h"

#include <cstddef>
#include <string>

namespace ZemTree {

// The shared list of allowed values as the selectors show it.
class IEnumStorageView : public virtual Zem::IView {
public:
    // Inserts at `position`: 0 prepends, a position at or past the end appends, any other inserts after the row
    // before it.
    virtual void insertValue(const std::string& value, const std::string& text, const std::string& icon,
                             std::size_t position) = 0;
    virtual void removeValue(const std::string& value) = 0;
    virtual void clearValues() = 0;
};

} // namespace ZemTree
