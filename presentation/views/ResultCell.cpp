#include "presentation/views/ResultCell.h"

#include "presentation/frame/IPresenter.h"
#include "presentation/frame/IView.h"
#include "presentation/widgets/MakeManaged.h"
#include "presentation/widgets/SharedSizeGroupOwner.h"

#include <gtkmm/box.h>

namespace ZemTree {

ResultCell::ResultCell(const std::string& key)
    : owner(Zem::make_managed<Zem::SharedSizeGroupOwner>(key)), frame(Zem::make_managed<Gtk::Frame>())
{
    auto context = owner->get_style_context();
    for (const char* name : {"ResultDataCell", "standartSize", "DefaultControlBorder", "SharedGroup"})
        context->add_class(name);
    frame->set_shadow_type(Gtk::SHADOW_NONE);
    owner->add(*frame);
}

} // namespace ZemTree

namespace ZemTree {

void showInFrame(Gtk::Frame& frame, Zem::IView* view)
{
    if (frame.get_child())
        frame.remove();
    if (auto* const widget = dynamic_cast<Gtk::Widget*>(view)) {
        frame.add(*widget);
        widget->show();
    }
}

void setOverlappingSpacing(Gtk::Box& box)
{
    box.set_spacing(-1);
}

void showItemRows(Gtk::Box& box, const std::vector<Zem::IPresenter*>& items)
{
    for (Gtk::Widget* child : box.get_children())
        box.remove(*child);
    for (Zem::IPresenter* item : items) {
        if (auto* const widget = dynamic_cast<Gtk::Widget*>(item->getView()))
            box.add(*widget);
    }
    box.show_all();
}

} // namespace ZemTree
