#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/treemodel.h>
#include <gtkmm/treemodelcolumn.h>

namespace ZemTree {

// The columns of a list of allowed values: the value a model keeps, the text a user reads, and an icon name (empty
// for none).
class EnumColumns : public Gtk::TreeModel::ColumnRecord {
public:
    EnumColumns()
    {
        add(value);
        add(text);
        add(icon);
    }

    // One instance serves every store, as the columns only describe the rows.
    static const EnumColumns& instance()
    {
        static const EnumColumns columns;
        return columns;
    }

    Gtk::TreeModelColumn<Glib::ustring> value;
    Gtk::TreeModelColumn<Glib::ustring> text;
    Gtk::TreeModelColumn<Glib::ustring> icon;
};

} // namespace ZemTree
