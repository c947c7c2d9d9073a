#pragma once

#include "presentation/frame/IWindowView.h"

namespace Zem {

// A window whose content the user accepts or drops: OK raises signalConfirmed; Cancel, Escape and the close
// button raise signalCloseRequested.
class IConfirmWindowView : public virtual IWindowView {
public:
    sigc::signal<void> signalConfirmed;
};

} // namespace Zem
