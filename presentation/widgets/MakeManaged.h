#pragma once

#include <gtkmm/object.h>

#include <utility>

namespace Zem {

// A widget owned by the container it is added to: made here, deleted by GTK with its parent.
template <class T, class... Args> T* make_managed(Args&&... args)
{
    return Gtk::manage(new T(std::forward<Args>(args)...));
}

} // namespace Zem
