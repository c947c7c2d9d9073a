#pragma once

#include <gtkmm/frame.h>

#include <string>
#include <vector>

namespace Gtk {
class Box;
}

namespace Zem {
class IView;
class SharedSizeGroupOwner;
} // namespace Zem

namespace Zem {
class IPresenter;
}

namespace ZemTree {

// One cell of a result row: an owner of the column's key, styled as a bordered cell, with a frame inside that
// takes the cell's content. Both are managed by their parents.
struct ResultCell {
    explicit ResultCell(const std::string& key);

    Zem::SharedSizeGroupOwner* owner;
    Gtk::Frame* frame;
};

// Shows the widget of `view` in `frame` instead of what was there. The widget stays owned by its presenter.
void showInFrame(Gtk::Frame& frame, Zem::IView* view);

// A box whose neighbouring borders overlap by a pixel. A negative spacing is refused as a construct property,
// so it is set afterwards.
void setOverlappingSpacing(Gtk::Box& box);

// Replaces the rows of `box` by the views of `items`, in their order.
void showItemRows(Gtk::Box& box, const std::vector<Zem::IPresenter*>& items);

} // namespace ZemTree
