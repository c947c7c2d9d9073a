#pragma once

#include "presentation/frame/IView.h"

#include <sigc++/signal.h>

namespace ZemTree {

// The switches of a graph unit's diagram and table. The signals carry whether the user asked to apply the change
// to every graph unit of the tree; setting a switch from the model raises nothing.
class IResultMultiGraphUnitControlView : public virtual Zem::IView {
public:
    virtual void setIsControlVisible(bool isVisible) = 0;
    virtual void setIsGraphVisible(bool isVisible) = 0;
    virtual bool getIsGraphVisible() const = 0;
    virtual void setIsTableVisible(bool isVisible) = 0;
    virtual bool getIsTableVisible() const = 0;

    sigc::signal<void, bool>& getSignalIsGraphVisibleChanged() { return signalIsGraphVisibleChanged; }
    sigc::signal<void, bool>& getSignalIsTableVisibleChanged() { return signalIsTableVisibleChanged; }

protected:
    sigc::signal<void, bool> signalIsGraphVisibleChanged;
    sigc::signal<void, bool> signalIsTableVisibleChanged;
};

} // namespace ZemTree
