#pragma once

#include "presentation/frame/IConfirmWindowView.h"
#include "presentation/frame/WindowView.h"

#include <gtkmm/button.h>
#include <gtkmm/buttonbox.h>

namespace Zem {

// A window with a row of Cancel and OK under the content.
class ConfirmWindowView : public WindowView, public IConfirmWindowView {
public:
    ConfirmWindowView();

    Gtk::Button& getOkButton() { return _okButton; }
    Gtk::Button& getCancelButton() { return _cancelButton; }

protected:
    bool on_key_press_event(GdkEventKey* event) override;

private:
    Gtk::ButtonBox _buttons;
    Gtk::Button _cancelButton;
    Gtk::Button _okButton;
};

} // namespace Zem
