#pragma once

#include "presentation/frame/IView.h"

#include <sigc++/signal.h>

#include <string>

namespace ZemTree {

// The frame in which a unit's data is edited: it hosts the data's own view, shows whether a formula is the
// source, marks an error, and offers the context menu.
class IValueView : public virtual Zem::IView {
public:
    // Shows the data's view inside the frame.
    virtual void setDataView(Zem::IView* view) = 0;
    // The context menu, made on first use.
    virtual Zem::IView* getContextMenuView() = 0;
    virtual void setIsFormulaSource(bool isFormulaSource) = 0;
    virtual void setTooltip(const std::string& text) = 0;
    // Empty clears the error.
    virtual void setError(const std::string& text) = 0;
    // True while the user is inside the frame.
    virtual bool isEditMode() const = 0;

    sigc::signal<void, bool> signalIsFormulaSourceChanged;
    sigc::signal<void> signalFormulaChangeRequired;
    sigc::signal<void> signalGetFocus;
    sigc::signal<void> signalLostFocus;
    sigc::signal<void> signalIsEditModeChanged;
};

// The frame of a unit: a value frame that can also reset the unit to its default.
class IUnitView : public virtual IValueView {
public:
    sigc::signal<void> signalResetValue;
};

} // namespace ZemTree
