#pragma once

#include "presentation/frame/IPresenter.h"

#include <sigc++/signal.h>

namespace ZemTree {

// A presenter that edits a piece of data on behalf of its owner, who moves the data to and from the model.
template <class T> class IDataPresenter : public virtual Zem::IPresenter {
public:
    // Raised when the user has changed the data held here.
    sigc::signal<void> signalDataChanged;

    virtual void setData(T data) = 0;
    virtual T getData() = 0;
    // The menu that a right click inside the data's view opens; the owner's menu, shown here too.
    virtual void setContextMenu(Zem::IView* menu) = 0;
};

} // namespace ZemTree
