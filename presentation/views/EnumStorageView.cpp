#include "presentation/views/EnumStorageView.h"

#include "presentation/views/EnumColumns.h"

namespace ZemTree {

EnumStorageView::EnumStorageView() : _store(Gtk::TreeStore::create(EnumColumns::instance())) {}

void EnumStorageView::insertValue(const std::string& value, const std::string& text, const std::string& icon,
                                  std::size_t position)
{
    const Gtk::TreeNodeChildren rows = _store->children();
    Gtk::TreeModel::iterator row;
    if (position == 0)
        row = _store->prepend();
    else if (position >= rows.size())
        row = _store->append();
    else
        row = _store->insert_after(rows[position - 1]);
    const EnumColumns& columns = EnumColumns::instance();
    (*row)[columns.value] = value;
    (*row)[columns.text] = text;
    (*row)[columns.icon] = icon;
}

void EnumStorageView::removeValue(const std::string& value)
{
    const EnumColumns& columns = EnumColumns::instance();
    for (Gtk::TreeModel::iterator row = _store->children().begin(); row != _store->children().end(); ++row) {
        if (Glib::ustring((*row)[columns.value]) == value) {
            _store->erase(row);
            return;
        }
    }
}

void EnumStorageView::clearValues()
{
    _store->clear();
}

} // namespace ZemTree
