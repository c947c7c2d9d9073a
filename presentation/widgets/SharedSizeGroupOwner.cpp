#include "presentation/widgets/SharedSizeGroupOwner.h"

#include "presentation/widgets/SharedSizeGroup.h"

#include <algorithm>

namespace Zem {

SharedSizeGroupOwner::SharedSizeGroupOwner(const std::string& key) : _key(key), _group(&SharedSizeGroup::get(key))
{
    set_has_window(false);
    get_style_context()->add_class("SharedGroup");
    _group->join(this);
}

SharedSizeGroupOwner::~SharedSizeGroupOwner()
{
    _group->leave(this);
}

Gtk::SizeRequestMode SharedSizeGroupOwner::get_request_mode_vfunc() const
{
    return Gtk::SIZE_REQUEST_HEIGHT_FOR_WIDTH;
}

void SharedSizeGroupOwner::get_preferred_width_vfunc(int& minimum, int& natural) const
{
    int ownMinimum = 0;
    int ownNatural = 0;
    const Gtk::Widget* const child = get_child();
    if (child && child->get_visible())
        child->get_preferred_width(ownMinimum, ownNatural);
    const int border = 2 * static_cast<int>(get_border_width());
    _group->report(const_cast<SharedSizeGroupOwner*>(this), ownMinimum + border, ownNatural + border, minimum, natural);
}

void SharedSizeGroupOwner::get_preferred_width_for_height_vfunc(int /*height*/, int& minimum, int& natural) const
{
    get_preferred_width_vfunc(minimum, natural);
}

void SharedSizeGroupOwner::get_preferred_height_vfunc(int& minimum, int& natural) const
{
    minimum = 0;
    natural = 0;
    const Gtk::Widget* const child = get_child();
    if (child && child->get_visible())
        child->get_preferred_height(minimum, natural);
    const int border = 2 * static_cast<int>(get_border_width());
    minimum += border;
    natural += border;
}

void SharedSizeGroupOwner::get_preferred_height_for_width_vfunc(int width, int& minimum, int& natural) const
{
    minimum = 0;
    natural = 0;
    const int border = 2 * static_cast<int>(get_border_width());
    const Gtk::Widget* const child = get_child();
    if (child && child->get_visible())
        child->get_preferred_height_for_width(std::max(0, width - border), minimum, natural);
    minimum += border;
    natural += border;
}

void SharedSizeGroupOwner::on_size_allocate(Gtk::Allocation& allocation)
{
    set_allocation(allocation);
    Gtk::Widget* const child = get_child();
    if (!child || !child->get_visible())
        return;
    const int border = static_cast<int>(get_border_width());
    Gtk::Allocation inner(allocation.get_x() + border, allocation.get_y() + border,
                          std::max(1, allocation.get_width() - 2 * border),
                          std::max(1, allocation.get_height() - 2 * border));
    child->size_allocate(inner);
}

} // namespace Zem
