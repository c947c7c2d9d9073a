#pragma once

#include "presentation/frame/IView.h"

#include <sigc++/trackable.h>

namespace Zem {

// A presenter: holds a model, listens to it and drives a view. Inherited virtually, so that a base with the view
// logic and an interface of the model side can meet in one object; trackable, so its slots die with it.
class IPresenter : public sigc::trackable {
public:
    virtual ~IPresenter() = default;
    // The view, made on the first call; GUI thread only.
    virtual IView* getView() = 0;
};

} // namespace Zem
