#pragma once

#include "presentation/frame/IView.h"

#include <gtkmm/menu.h>

namespace ZemTree {

// A context menu standing as a view, so that a data view can open its frame's menu.
class MenuView : public Gtk::Menu, public Zem::IView {
public:
    MenuView() = default;
    MenuView(const MenuView&) = delete;
    MenuView& operator=(const MenuView&) = delete;
};

} // namespace ZemTree
