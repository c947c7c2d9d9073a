#pragma once

#include "presentation/views/IEnumStorageView.h"

#include <glibmm/refptr.h>
#include <gtkmm/treestore.h>

namespace ZemTree {

// A Gtk::TreeStore of EnumColumns that any number of combo boxes show at once; it has no widget of its own.
class EnumStorageView : public IEnumStorageView {
public:
    EnumStorageView();
    EnumStorageView(const EnumStorageView&) = delete;
    EnumStorageView& operator=(const EnumStorageView&) = delete;

    const Glib::RefPtr<Gtk::TreeStore>& getStore() const { return _store; }

    void insertValue(const std::string& value, const std::string& text, const std::string& icon,
                     std::size_t position) override;
    void removeValue(const std::string& value) override;
    void clearValues() override;

private:
    Glib::RefPtr<Gtk::TreeStore> _store;
};

} // namespace ZemTree
