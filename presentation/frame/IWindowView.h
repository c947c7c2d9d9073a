#pragma once

#include "presentation/frame/IView.h"

#include <sigc++/signal.h>

#include <string>

namespace Zem {

// A top-level window around one content view.
class IWindowView : public virtual IView {
public:
    virtual void setTitle(const std::string& title) = 0;
    // Shows `content` inside, replacing what was there; null empties the window. Not owned.
    virtual void setContent(IView* content) = 0;
    virtual void setModal(bool isModal) = 0;
    virtual void setDefaultSize(int width, int height) = 0;
    // Shows the window, transient for the top-level window of `owner` when it is a widget in one.
    virtual void showOver(IView* owner) = 0;
    // Hides the window; it stays until its presenter deletes it.
    virtual void close() = 0;

    // The user asks to close the window: its close button, or Escape where the window allows it.
    sigc::signal<void> signalCloseRequested;
};

} // namespace Zem
