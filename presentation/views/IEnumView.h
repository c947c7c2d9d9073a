#pragma once

#include "presentation/frame/IView.h"

#include <sigc++/signal.h>

#include <string>

namespace ZemTree {

class IEnumStorageView;

// A selector of one value out of a shared list.
class IEnumView : public virtual Zem::IView {
public:
    // The list to choose from; null leaves nothing to choose.
    virtual void setStorage(IEnumStorageView* storage) = 0;
    // Shows `value` as chosen. A value that the list lacks is shown as it is, marked missing; the empty value shows
    // no choice.
    virtual void showValue(const std::string& value, bool isMissing) = 0;

    // The user chose a value of the list; never raised for showValue.
    sigc::signal<void, std::string> signalValueChosen;
};

} // namespace ZemTree
