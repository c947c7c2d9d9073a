#include "presentation/frame/ConfirmWindowView.h"

#include "core/tree/TreeLocalization.h"

#include <gdk/gdkkeysyms.h>

namespace Zem {

ConfirmWindowView::ConfirmWindowView()
    : _buttons(Gtk::ORIENTATION_HORIZONTAL), _cancelButton(lng::Tree::get("Window.cancel")),
      _okButton(lng::Tree::get("Window.ok"))
{
    get_style_context()->add_class("ConfirmWindowView");
    _buttons.get_style_context()->add_class("ConfirmWindowButtons");
    _buttons.set_layout(Gtk::BUTTONBOX_END);
    _buttons.pack_start(_cancelButton);
    _buttons.pack_start(_okButton);
    _layout.pack_end(_buttons, Gtk::PACK_SHRINK);
    _cancelButton.signal_clicked().connect([this] { signalCloseRequested.emit(); });
    _okButton.signal_clicked().connect([this] { signalConfirmed.emit(); });
    _buttons.show_all();
}

// Escape reaches the window only when the focused widget left it alone (an entry undoing its typing keeps it).
bool ConfirmWindowView::on_key_press_event(GdkEventKey* event)
{
    if (WindowView::on_key_press_event(event))
        return true;
    if (event->keyval == GDK_KEY_Escape) {
        signalCloseRequested.emit();
        return true;
    }
    return false;
}

} // namespace Zem
